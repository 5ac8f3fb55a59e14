// Files of frames. The first line of the input is "NAME", or "NAME SKIP" or "NAME SKIP STRIDE", all else the content:
// a PGM or PPM file by its header, or a headerless one by its name.
#include <algorithm>
#include <sstream>

#include "tools/ToolRefusals.h"
#include "tools/files/FrameName.h"
#include "tools/files/Pnm.h"
#include "tools/files/RawLayout.h"

using namespace kvx::fuzz;
using namespace kvx::tool;

namespace {

struct File {
    std::string name;
    uint64_t skipBytes = 0;
    std::optional<uint64_t> stride;
    Bytes content;
};

File SplitInput(const uint8_t* data, size_t size) {
    const uint8_t *end = data + size, *newline = std::find(data, end, '\n');
    File file;
    std::istringstream line(std::string(data, newline));
    line >> file.name >> file.skipBytes;
    file.name = file.name.c_str();  // names of files have no NUL
    if (uint64_t stride = 0; line >> stride) file.stride = stride;
    if (newline != end) file.content.assign(newline + 1, end);
    return file;
}

bool AreEqual(const cv::Mat& a, const cv::Mat& b) {
    return a.size() == b.size() && a.type() == b.type() && cv::norm(a, b, cv::NORM_INF) == 0;
}

void DecodeAsPnm(const File& file, const PnmHeader& header) {
    Require(header.headerBytes <= file.content.size(), "a header is inside its file");
    Picture picture;
    if (IsRefusedByTool([&] { picture = DecodePnm(file.content, header, file.name); },
                        {ExitCode::Input, ExitCode::Frame}))
        return;
    Require(uint64_t(picture.pixels.cols) == header.width && uint64_t(picture.pixels.rows) == header.height &&
                picture.maximum == header.maximum,
            "a picture is as its header says");
    const Bytes again = EncodePnm(picture);
    Require(AreEqual(DecodePnm(again, ParsePnmHeader(again).value(), "again").pixels, picture.pixels),
            "a picture that is written reads back");
}

void CutAsRaw(const File& file, const FrameSize& size, const kvx::frame::Format& format) {
    RawFrame frame;
    const RawLayout layout{format, size.width, size.height, file.stride, file.skipBytes};
    if (IsRefusedByTool([&] { frame = CutFrame(InputFile(file.content), layout, file.name); }, {ExitCode::Frame}))
        return;
    Require(uint64_t(frame.samples.cols) == size.width && uint64_t(frame.samples.rows) == size.height,
            "a frame has the size of its name");
    const Bytes packed = EncodePacked(frame.samples, format, kvx::frame::RowPadding::Line);
    const RawFrame again = CutFrame(InputFile(packed), {format, size.width, size.height, {}}, "again");
    Require(AreEqual(again.samples, frame.samples), "a frame that is written reads back");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const File file = SplitInput(data, size);
    const FrameName name = ParseFrameName(file.name);
    if (const auto header = ParsePnmHeader(file.content)) DecodeAsPnm(file, *header);
    if (!name.size || !name.format) return 0;
    const FrameName again = ParseFrameName(MakeFrameName("frame", *name.size, *name.format));
    Require(again.size == name.size && again.format == name.format, "a name that is made reads back");
    if (IsSource(*name.format)) CutAsRaw(file, *name.size, *name.format);
    return 0;
}
