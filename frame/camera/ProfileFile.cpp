#include <filesystem>
#include <fstream>
#include <sstream>

#include "frame/base/Fail.h"
#include "frame/camera/GreyPng.h"
#include "frame/camera/ProfileJson.h"

namespace kvx::frame {
namespace {

namespace fs = std::filesystem;

std::string ContentOf(const fs::path& path) {
    constexpr uint64_t kMostBytes = 1 << 30;  // a dark frame of 500 megapixels
    std::error_code error;
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    if (!file || !fs::is_regular_file(path, error) || fs::file_size(path, error) > kMostBytes ||
        !(content << file.rdbuf()))
        Fail(KvxResult_InvalidArgument, "{}: cannot be read", path.string());
    return content.str();
}

/**
 * A file that exists already keeps its content until the new one is complete, and its permissions. Symbolic links stay,
 * too: renaming would replace them.
 */
void Write(const fs::path& path, const std::string& content) {
    std::error_code error;
    fs::path target = fs::weakly_canonical(path, error);
    if (error) target = path;
    const fs::path part = target.string() + ".part";
    const fs::file_status old = fs::status(target, error);
    std::ofstream file(part, std::ios::binary);
    file << content;
    file.close();
    if (fs::is_regular_file(old)) fs::permissions(part, old.permissions(), error);
    if (file) fs::rename(part, target, error);
    if (!file || error) {
        fs::remove(part, error);
        Fail(KvxResult_ConversionFailed, "{}: cannot be written", path.string());
    }
}

}  // namespace

CameraProfile ReadCameraProfile(const std::string& path) {
    std::string darkFrame;
    CameraProfile profile = ProfileFromJson(ContentOf(path), path, darkFrame);
    if (!darkFrame.empty()) {
        const fs::path name(darkFrame);
        if (name.filename() != name)
            Fail(KvxResult_InvalidArgument, "{}: \"dark_frame\" is not a file next to the profile", path);
        const fs::path file = fs::path(path).parent_path() / name;
        profile.darkFrame = DecodeGreyPng(ContentOf(file), profile.width, profile.height, file.string());
    }
    try {
        Validate(profile);
    } catch (const Error& error) {
        throw Error(error.Result(), fmt::format("{}: {}", path, error.what()));
    }
    return profile;
}

CameraProfile ParseCameraProfile(std::string_view json, const std::string& name) {
    std::string darkFrame;
    CameraProfile profile = ProfileFromJson(json, name, darkFrame);
    if (!darkFrame.empty()) Fail(KvxResult_InvalidArgument, "{}: names a dark frame: read it from a file", name);
    Validate(profile);
    return profile;
}

std::string DarkFramePath(const std::string& profilePath) {
    const fs::path path(profilePath);
    return (path.parent_path() / (path.stem().string() + "-dark.png")).string();
}

void WriteCameraProfile(const CameraProfile& profile, const std::string& path) {
    Validate(profile);
    std::string name;
    if (!profile.darkFrame.empty()) {
        const fs::path darkFrame = DarkFramePath(path);
        Write(darkFrame, EncodeGreyPng(profile.darkFrame, profile.width, profile.height));
        name = darkFrame.filename().string();
    }
    Write(path, ProfileToJson(profile, name));
}

}  // namespace kvx::frame
