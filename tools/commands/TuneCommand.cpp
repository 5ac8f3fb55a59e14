#include <spawn.h>
#include <unistd.h>

#include <csignal>
#include <memory>

#include "tools/commands/Commands.h"
#include "tools/console/Arguments.h"
#include "tools/console/Console.h"
#include "tools/convert/FinishOptions.h"
#include "tools/files/InputFile.h"
#include "tools/files/PictureDecoder.h"
#include "tools/frames/FrameOptions.h"
#include "tools/tune/TuneServer.h"

namespace kvx::tool {
namespace {

constexpr const char* kFooter =
    R"(Opens a page in the browser that shows the frames and a control for every setting of
convert: what it changes is seen at once. The page compares settings and algorithms,
balances on a grey place that is clicked, measures a colour chart, and gives the settings
as a sidecar, a camera profile, a command line, Python or a gst-launch line.

The page comes from this program and from nowhere else. Only this computer can open it,
at the address that is printed, which is another one each time. Files are written by its
two Save buttons only: the sidecar of a frame (FRAME.json), and the profile of --camera or
a new one next to the frame. Ctrl-C ends it, and so does the page.

Examples:
  kvx-demosaic tune kvx-demo/scene_768x512_BayerRG12.raw
  kvx-demosaic tune *.raw --camera camera.json --no-browser --port 8080)";

struct TuneOptions {
    TuneInput input;
    std::string reference;
    std::optional<uint64_t> port;
    bool opensBrowser = true;
};

cv::Mat ReadReference(const std::string& path) {
    if (path.empty()) return {};
    const Picture picture = DecodePicture(ReadInput(path), InputName(path));
    if (picture.pixels.channels() != 3) Fail(ExitCode::Input, "{}: is not a colour picture", InputName(path));
    cv::Mat bytes;
    picture.pixels.convertTo(bytes, CV_8U, 255.0 / picture.maximum);
    return bytes;
}

/** The browser of the desktop. Without one the user opens the printed address. */
void OpenBrowser(const std::string& address) {
    // Signals are for this program: the browser neither inherits their mask nor gets Ctrl-C.
    sigset_t none;
    sigset_t standard;
    sigemptyset(&none);
    sigemptyset(&standard);
    sigaddset(&standard, SIGPIPE);
    posix_spawnattr_t attributes;
    ::posix_spawnattr_init(&attributes);
    ::posix_spawnattr_setsigmask(&attributes, &none);
    ::posix_spawnattr_setsigdefault(&attributes, &standard);
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
    const char* arguments[] = {"xdg-open", address.c_str(), nullptr};
    ::posix_spawnp(nullptr, arguments[0], nullptr, &attributes, const_cast<char**>(arguments), environ);
    ::posix_spawnattr_destroy(&attributes);
}

void Tune(TuneOptions& options) {
    if (std::ranges::find(options.input.frames, "-") != options.input.frames.end()) {
        Fail(ExitCode::Usage, "-: tune reads files, standard input cannot be read again");
    }
    if (!options.reference.empty() && options.input.frames.size() > 1) {
        Fail(ExitCode::Usage, "--reference: is that of one frame, not of {}", options.input.frames.size());
    }
    options.input.reference = ReadReference(options.reference);
    TuneService service(std::move(options.input));
    // All threads of the server inherit the mask: only sigwait() receives these signals.
    sigset_t ends;
    sigemptyset(&ends);
    sigaddset(&ends, SIGINT);
    sigaddset(&ends, SIGTERM);
    ::pthread_sigmask(SIG_BLOCK, &ends, nullptr);
    const TuneServer server(service, static_cast<uint16_t>(options.port.value_or(0)),
                            [] { ::kill(::getpid(), SIGTERM); });
    PrintText(server.Address() + "\n");
    PrintMessage("the page is open at this address until Ctrl-C");
    if (options.opensBrowser) OpenBrowser(server.Address());
    int signal = 0;
    ::sigwait(&ends, &signal);
}

}  // namespace

void AddTuneCommand(CLI::App& tool) {
    const auto options = std::make_shared<TuneOptions>();
    CLI::App* command = tool.add_subcommand("tune", "Look at frames and tune settings in the browser");
    command->add_option("FRAMES", options->input.frames, "Headerless raw, PGM, PNG or TIFF files")->required();
    AddFrameOptions(*command, options->input.request);
    AddCameraOption(*command, options->input.camera);
    command->add_option("--reference", options->reference, "The true picture of the frame, for the PSNR")
        ->type_name("FILE");
    AddNumber(*command, "--port", options->port, "Port on this computer; default: one that is free", UINT16_MAX);
    command->add_flag_callback(
        "--no-browser", [options] { options->opensBrowser = false; }, "Only print the address");
    command->footer(kFooter);
    command->callback([options, command] {
        options->input.cameraPath =
            command->get_option("--camera")->count() > 0 ? command->get_option("--camera")->results().front() : "";
        Tune(*options);
    });
}

}  // namespace kvx::tool
