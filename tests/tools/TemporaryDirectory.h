#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <stdexcept>
#include <string>

#include "tools/files/Bytes.h"

namespace kvx::tool {

/** A directory of the test's own, gone afterwards. */
class TemporaryDirectory {
public:
    TemporaryDirectory() {
        std::string name = (std::filesystem::temp_directory_path() / "kvx-tool-test-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no temporary directory");
        }
        m_path = name;
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
    ~TemporaryDirectory() {
        std::error_code error;
        std::filesystem::remove_all(m_path, error);
    }

    std::string Path(const std::string& name) const {
        return (m_path / name).string();
    }

    /** Writes a file and gives its path. */
    std::string Write(const std::string& name, const Bytes& content) const {
        std::ofstream file(Path(name), std::ios::binary);
        file.write(reinterpret_cast<const char*>(content.data()), static_cast<std::streamsize>(content.size()));
        return Path(name);
    }

    std::string WriteText(const std::string& name, const std::string& text) const {
        return Write(name, Bytes(text.begin(), text.end()));
    }

    Bytes Read(const std::string& name) const {
        std::ifstream file(Path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

    std::set<std::string> Entries() const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(m_path)) {
            names.insert(entry.path().filename().string());
        }
        return names;
    }

private:
    std::filesystem::path m_path;
};

}  // namespace kvx::tool
