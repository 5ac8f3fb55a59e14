#include <CLI/CLI.hpp>
#include <csignal>
#include <sstream>

#include "tools/ToolError.h"
#include "tools/commands/Commands.h"
#include "tools/console/Console.h"
#include "tools/console/Misspelling.h"

namespace kvx::tool {
namespace {

constexpr const char* kFooter = R"('kvx-demosaic COMMAND --help' describes a command in full.

Exit codes: 0 success; 2 wrong usage; 3 the input cannot be read or is not a picture;
4 the frame does not fit (size, stride, depth, memory); 5 the output cannot be written;
6 the library refused the call, its code is printed; 7 some of several files failed;
1 any other failure.

Examples:
  kvx-demosaic demo
  kvx-demosaic convert kvx-demo/scene_768x512_BayerRG12.raw scene.png --algorithm edge-aware
  kvx-demosaic convert frame.raw frame.png --look natural
  kvx-demosaic convert *.raw --output pictures/ --json
  kvx-demosaic mosaic kvx-demo/scene.png scene.pgm --format BayerGR14)";

int Finish(ExitCode code, const std::string& message) {
    PrintMessage(message);
    return static_cast<int>(code);
}

/** Prints help or version when the user asked for them; anything else is wrong usage, reported in one line. */
int FinishParsing(CLI::App& tool, const CLI::ParseError& error, const std::vector<std::string>& words) {
    if (error.get_exit_code() != 0) {
        const std::optional<std::string> misspelling = FindMisspelling(tool, words);
        return Finish(ExitCode::Usage, misspelling ? *misspelling : fmt::format("{}; see --help", error.what()));
    }
    std::ostringstream text;
    tool.exit(error, text, text);
    PrintText(text.str());
    return static_cast<int>(ExitCode::Success);
}

int RunTool(int argc, char** argv) {
    CLI::App tool("Converts raw frames of colour cameras to pictures.", "kvx-demosaic");
    tool.set_version_flag("--version", "kvx-demosaic " KVX_DEMOSAIC_VERSION, "Print the version and exit");
    tool.require_subcommand(1);
    tool.footer(kFooter);
    AddConvertCommand(tool);
    AddMosaicCommand(tool);
    AddPackCommands(tool);
    AddFormatsCommand(tool);
    AddParamsCommand(tool);
    AddDemoCommand(tool);
    AddInfoCommand(tool);
    AddExplainCommand(tool);
    AddGuessCommand(tool);
    AddCompareCommand(tool);
    AddBenchCommand(tool);
    AddCalibrateCommand(tool);
    AddTuneCommand(tool);
    try {
        tool.parse(argc, argv);
    } catch (const CLI::RuntimeError& failure) {
        return failure.get_exit_code();  // the command has reported what failed
    } catch (const CLI::ParseError& error) {
        return FinishParsing(tool, error, {argv + 1, argv + argc});
    }
    return static_cast<int>(ExitCode::Success);
}

int RunGuarded(int argc, char** argv) {
    try {
        return RunTool(argc, argv);
    } catch (...) {
        const ToolError failure = CurrentFailure();
        return Finish(failure.Code(), failure.what());
    }
}

}  // namespace
}  // namespace kvx::tool

int main(int argc, char** argv) {
    // A file-size limit is an error of the output like any other, and must not leave a temporary file.
    std::signal(SIGXFSZ, SIG_IGN);
    kvx::tool::OpenStandardStreams();
    return kvx::tool::RunGuarded(argc, argv);
}
