// Converts frames of a live camera: Aravis delivers Bayer frames, the frame layer converts them.
//
//     aravis [CAMERA [FRAMES [PICTURE.ppm]]]
//
// The default camera is Aravis' simulated camera, "Fake_1".
#include <KvxFrame/KvxFrame.h>
#include <arv.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace frame = kvx::frame;

namespace {

struct Unref {
    void operator()(void* object) const {
        g_object_unref(object);
    }
};
using Camera = std::unique_ptr<ArvCamera, Unref>;
using Stream = std::unique_ptr<ArvStream, Unref>;

/** Throws the error that Aravis reported in its last argument. */
void Check(GError*& error) {
    if (!error) return;
    const std::string message = error->message;
    g_clear_error(&error);
    throw std::runtime_error(message);
}

/** A view of a camera frame for the frame layer. The pixel format is a PFNC code. */
frame::SourceView ViewOf(ArvBuffer* buffer) {
    const auto format = frame::FormatByPfncCode(arv_buffer_get_image_pixel_format(buffer));
    if (!format) throw std::runtime_error("the camera's pixel format is not a mosaic");
    size_t size = 0;
    const void* data = arv_buffer_get_image_data(buffer, &size);
    return {data,
            static_cast<uint32_t>(arv_buffer_get_image_width(buffer)),
            static_cast<uint32_t>(arv_buffer_get_image_height(buffer)),
            /*stride=*/0,
            size,
            *format};
}

void WritePpm(const std::string& path, const std::vector<uint8_t>& rgb, const frame::SourceView& source) {
    const std::unique_ptr<FILE, int (*)(FILE*)> file(std::fopen(path.c_str(), "wb"), &std::fclose);
    if (!file || std::fprintf(file.get(), "P6\n%u %u\n255\n", source.width, source.height) < 0 ||
        std::fwrite(rgb.data(), 1, rgb.size(), file.get()) != rgb.size())
        throw std::runtime_error(path + ": cannot write the file");
}

void Run(const char* name, int frames, const char* path) {
    arv_enable_interface("Fake");
    GError* error = nullptr;
    const Camera camera(arv_camera_new(name, &error));
    Check(error);
    arv_camera_set_pixel_format(camera.get(), ARV_PIXEL_FORMAT_BAYER_RG_8, &error);
    Check(error);
    const Stream stream(arv_camera_create_stream(camera.get(), nullptr, nullptr, &error));
    Check(error);
    const guint payload = arv_camera_get_payload(camera.get(), &error);
    Check(error);
    for (int i = 0; i < 4; ++i) arv_stream_push_buffer(stream.get(), arv_buffer_new_allocate(payload));

    frame::Converter converter(frame::Family::Bayer);  // reuses its memory for all frames
    converter.SetAlgorithm("ipp");
    std::vector<uint8_t> rgb;
    frame::SourceView source;
    arv_camera_start_acquisition(camera.get(), &error);
    Check(error);
    for (int converted = 0; converted < frames;) {
        ArvBuffer* buffer = arv_stream_timeout_pop_buffer(stream.get(), /*microseconds=*/2'000'000);
        if (!buffer) throw std::runtime_error("no frame within two seconds");
        if (arv_buffer_get_status(buffer) == ARV_BUFFER_STATUS_SUCCESS) {
            source = ViewOf(buffer);
            rgb.resize(size_t{source.width} * source.height * 3);
            converter.Convert(source, {rgb.data(), source.width, source.height, /*stride=*/0, rgb.size(),
                                       frame::FormatByName("RGB8")});
            ++converted;
        }
        arv_stream_push_buffer(stream.get(), buffer);  // return the buffer to the camera
    }
    arv_camera_stop_acquisition(camera.get(), &error);
    Check(error);
    std::printf("%d frames %s %ux%u from %s\n", frames, frame::Name(source.format).c_str(), source.width, source.height,
                name);
    if (path) WritePpm(path, rgb, source);
}

}  // namespace

int main(int argc, char** argv) try {
    const char* frames = argc > 2 ? argv[2] : "10";
    Run(argc > 1 ? argv[1] : "Fake_1", std::max(1, std::atoi(frames)), argc > 3 ? argv[3] : nullptr);
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return EXIT_FAILURE;
}
