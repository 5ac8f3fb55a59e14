#include <CLI/CLI.hpp>
#include <csignal>
#include <exception>
#include <new>
#include <opencv2/core.hpp>
#include <sstream>

#include "tools/Console.h"
#include "tools/ConvertCommand.h"
#include "tools/DemoCommand.h"
#include "tools/FormatsCommand.h"
#include "tools/MosaicCommand.h"
#include "tools/ParamsCommand.h"
#include "tools/ToolError.h"
#include "tools/look/ExplainCommand.h"

namespace kvx::tool {
namespace {

constexpr const char* kFooter = R"('kvx-demosaic COMMAND --help' tells more about a command.

Exit codes: 0 success; 2 wrong usage; 3 the input cannot be read or is no picture;
4 the frame does not fit (size, stride, depth, memory); 5 the output cannot be written;
6 the library refused, its code is printed; 1 anything unexpected.

Examples:
  kvx-demosaic demo
  kvx-demosaic convert kvx-demo/scene_768x512_BayerRG12.raw scene.png --algorithm edge-aware
  kvx-demosaic mosaic kvx-demo/scene.png scene.pgm --format BayerGR14)";

int Finish(ExitCode code, const std::string& message) {
    PrintMessage(message);
    return static_cast<int>(code);
}

/** Help and version are what the user asked for; anything else is wrong usage, told in one line. */
int FinishParsing(const CLI::App& tool, const CLI::ParseError& error) {
    if (error.get_exit_code() != 0) {
        return Finish(ExitCode::Usage, fmt::format("{}; see --help", error.what()));
    }
    std::ostringstream text;
    tool.exit(error, text, text);
    PrintText(text.str());
    return static_cast<int>(ExitCode::Success);
}

int RunTool(int argc, char** argv) {
    CLI::App tool("Turns raw frames of colour cameras into pictures.", "kvx-demosaic");
    tool.set_version_flag("--version", "kvx-demosaic " KVX_DEMOSAIC_VERSION, "Print the version and exit");
    tool.require_subcommand(1);
    tool.footer(kFooter);
    AddConvertCommand(tool);
    AddMosaicCommand(tool);
    AddFormatsCommand(tool);
    AddParamsCommand(tool);
    AddDemoCommand(tool);
    AddExplainCommand(tool);
    try {
        tool.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return FinishParsing(tool, error);
    }
    return static_cast<int>(ExitCode::Success);
}

int RunGuarded(int argc, char** argv) {
    constexpr const char* kNoMemory = "not enough memory for a frame of this size: free some, or check the size";
    try {
        return RunTool(argc, argv);
    } catch (const ToolError& error) {
        return Finish(error.Code(), error.what());
    } catch (const std::bad_alloc&) {
        return Finish(ExitCode::Frame, kNoMemory);
    } catch (const cv::Exception& error) {
        return error.code == cv::Error::StsNoMem ? Finish(ExitCode::Frame, kNoMemory)
                                                 : Finish(ExitCode::Unexpected, error.what());
    } catch (const std::exception& error) {
        return Finish(ExitCode::Unexpected, error.what());
    }
}

}  // namespace
}  // namespace kvx::tool

int main(int argc, char** argv) {
    // A file-size limit is an error of the output like any other, and must not leave a temporary file.
    std::signal(SIGXFSZ, SIG_IGN);
    return kvx::tool::RunGuarded(argc, argv);
}
