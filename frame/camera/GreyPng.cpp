#include "frame/camera/GreyPng.h"

#include <png.h>

#include "frame/base/Fail.h"

namespace kvx::frame {
namespace {

/** An image of libpng's simple interface, which throws nothing and prints nothing. */
class Png {
public:
    Png() {
        m_image.version = PNG_IMAGE_VERSION;
    }
    Png(const Png&) = delete;
    Png& operator=(const Png&) = delete;
    ~Png() {
        png_image_free(&m_image);
    }
    png_image* operator->() {
        return &m_image;
    }
    png_image* Get() {
        return &m_image;
    }

private:
    png_image m_image{};
};

}  // namespace

std::vector<uint16_t> DecodeGreyPng(const std::string& content, uint32_t width, uint32_t height,
                                    const std::string& path) {
    Png png;
    if (!png_image_begin_read_from_memory(png.Get(), content.data(), content.size()))
        Fail(KvxResult_InvalidArgument, "{}: {}", path, png->message);
    // For libpng samples of 16 bits are linear light, also those of files that do not say so: they are not changed.
    if (png->format != PNG_FORMAT_LINEAR_Y || png->width != width || png->height != height)
        Fail(KvxResult_InvalidArgument, "{}: is no grey PNG file of 16 bits and {} x {} pixels", path, width, height);
    std::vector<uint16_t> samples(size_t{width} * height);
    if (!png_image_finish_read(png.Get(), nullptr, samples.data(), 0, nullptr))
        Fail(KvxResult_InvalidArgument, "{}: {}", path, png->message);
    return samples;
}

std::string EncodeGreyPng(const std::vector<uint16_t>& samples, uint32_t width, uint32_t height) {
    Png png;
    png->format = PNG_FORMAT_LINEAR_Y;
    png->width = width;
    png->height = height;
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(*png.Get());
    std::string content(size, '\0');
    if (!png_image_write_to_memory(png.Get(), content.data(), &size, 0, samples.data(), 0, nullptr))
        Fail(KvxResult_ConversionFailed, "a dark frame of {} x {}: {}", width, height, png->message);
    content.resize(size);
    return content;
}

}  // namespace kvx::frame
