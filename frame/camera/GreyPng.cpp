#include "frame/camera/GreyPng.h"

#include <png.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdio>

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

/**
 * A reader of libpng's full interface: the simple one converts the samples of files with a gamma. Errors end in
 * longjmp(), so that no object with a destructor may be made after setjmp().
 */
class PngReader {
public:
    explicit PngReader(const std::string& content)
        : m_next(content.data()),
          m_end(content.data() + content.size()),
          m_png(png_create_read_struct(PNG_LIBPNG_VER_STRING, this, OnError, OnWarning)),
          m_info(m_png ? png_create_info_struct(m_png) : nullptr) {}
    PngReader(const PngReader&) = delete;
    PngReader& operator=(const PngReader&) = delete;
    ~PngReader() {
        png_destroy_read_struct(&m_png, &m_info, nullptr);
    }

    /** @return null, or what is wrong */
    const char* Read(std::vector<uint16_t>& samples, uint32_t width, uint32_t height) {
        if (!m_info) return "no memory";
        if (setjmp(png_jmpbuf(m_png)) != 0) return m_message.data();  // NOLINT(cert-err52-cpp): the interface of libpng
        png_set_read_fn(m_png, this, OnRead);
        png_read_info(m_png, m_info);
        if (png_get_color_type(m_png, m_info) != PNG_COLOR_TYPE_GRAY || png_get_bit_depth(m_png, m_info) != 16 ||
            png_get_image_width(m_png, m_info) != width || png_get_image_height(m_png, m_info) != height)
            return "is no grey PNG file of 16 bits and the size of the frames";
        if (std::endian::native == std::endian::little) png_set_swap(m_png);
        const int passes = png_set_interlace_handling(m_png);
        samples.resize(size_t{width} * height);
        for (int pass = 0; pass < passes; ++pass)
            for (uint32_t row = 0; row < height; ++row)
                png_read_row(m_png, reinterpret_cast<png_bytep>(samples.data() + size_t{row} * width), nullptr);
        return nullptr;
    }

private:
    static void OnError(png_structp png, png_const_charp message) {
        auto& kept = static_cast<PngReader*>(png_get_error_ptr(png))->m_message;
        std::snprintf(kept.data(), kept.size(), "%s", message);  // libpng's may be on the stack
        png_longjmp(png, 1);
    }
    static void OnWarning(png_structp, png_const_charp) {}
    static void OnRead(png_structp png, png_bytep bytes, size_t count) {
        auto* const reader = static_cast<PngReader*>(png_get_io_ptr(png));
        if (count > static_cast<size_t>(reader->m_end - reader->m_next)) png_error(png, "is cut off");
        std::copy_n(reader->m_next, count, bytes);
        reader->m_next += count;
    }

    const char *m_next, *m_end;
    std::array<char, 96> m_message{};
    png_structp m_png;
    png_infop m_info;
};

}  // namespace

std::vector<uint16_t> DecodeGreyPng(const std::string& content, uint32_t width, uint32_t height,
                                    const std::string& path) {
    std::vector<uint16_t> samples;
    PngReader reader(content);
    if (const char* const reason = reader.Read(samples, width, height))
        Fail(KvxResult_InvalidArgument, "{}: {}", path, reason);
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
