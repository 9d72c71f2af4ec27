#include "console/CommandLine.h"
#include "console/Console.h"
#include "console/LineSource.h"
#include "console/OwnStreams.h"
#include "console/PrintableText.h"
#include "console/RecordEdits.h"
#include "console/Start.h"
#include "console/TemporarySuite.h"
#include "console/Words.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <unistd.h>

using namespace arvon::console;
using arvon::host::ReferenceHost;
namespace fs = std::filesystem;

namespace {

enum ExitStatus { AllCarriedOut = 0, SomeNotCarriedOut = 1, CannotStart = 2 };

/// An open file that is closed with the object.
class OpenScript {
public:
    explicit OpenScript(const std::string& file) : descriptor_(open(file.c_str(), O_RDONLY | O_CLOEXEC)) {
        if (descriptor_ < 0)
            throw std::runtime_error("the script \"" + file + "\" cannot be opened: " + std::strerror(errno));
        if (fs::is_directory(file)) throw std::runtime_error("the script \"" + file + "\" is a folder");
    }
    ~OpenScript() { close(descriptor_); }
    OpenScript(const OpenScript&) = delete;
    OpenScript& operator=(const OpenScript&) = delete;
    int Descriptor() const { return descriptor_; }

private:
    int descriptor_;
};

Writer::Form FormOf(const CommandLine& line, std::FILE* out) {
    if (line.json) return Writer::Form::JsonLines;
    const char* noColour = std::getenv("NO_COLOR");
    const char* terminal = std::getenv("TERM");
    const bool plain = (noColour && *noColour) || (terminal && std::strcmp(terminal, "dumb") == 0);
    return isatty(fileno(out)) && !plain ? Writer::Form::ColouredText : Writer::Form::Text;
}

std::unique_ptr<LineSource> StandardInput(const OwnStreams& streams, SideWatch watch) {
    if (!isatty(streams.In())) return LineSource::OfDescriptor(streams.In(), std::move(watch));
    // what is typed is shown where the user looks, and never mixes into output that goes elsewhere
    std::FILE* screen = isatty(fileno(streams.Out())) ? streams.Out() : stderr;
    return LineSource::OfTerminal(streams.In(), screen, std::move(watch));
}

/// `status`, unless something of what was written did not get out.
ExitStatus WithOutput(std::FILE* out, ExitStatus status) {
    if (std::fflush(out) == 0 && !std::ferror(out)) return status;
    std::fputs("arvon-console: the output could not be written\n", stderr);
    return SomeNotCarriedOut;
}

ExitStatus Run(const CommandLine& line) {
    std::optional<OpenScript> script;
    if (line.script) script.emplace(*line.script);
    std::optional<TemporarySuite> copy;
    if (!line.suite) copy.emplace(SampleSuite());
    const OwnStreams streams;

    RecordEdits edits;
    arvon::host::Hooks hooks;
    hooks.editRecord = [&edits](arvon::IToolRecord& record) { return edits.Answer(record); };
    ReferenceHost host(line.suite ? fs::path(*line.suite) : copy->Folder(), std::move(hooks));
    if (line.profile) host.SetProfileId(ReadProfileId(*line.profile));

    const std::unique_ptr<Writer> writer =
        Writer::Create(FormOf(line, streams.Out()), !line.quiet, streams.Out());
    const SideWatch endedPrograms{host.PollDescriptor(), [&] { host.ProcessEvents(); }};
    const std::unique_ptr<LineSource> lines =
        script ? LineSource::OfDescriptor(script->Descriptor(), endedPrograms)
               : StandardInput(streams, endedPrograms);
    Console console(host, *writer, edits, FolderOfProgram() / "KvTM10.so");
    const bool isTyped = !script && isatty(streams.In());
    const ExitStatus status = console.Run(*lines, isTyped) ? AllCarriedOut : SomeNotCarriedOut;
    return WithOutput(streams.Out(), status);
}

} // namespace

int main(int count, char** arguments) {
    try {
        FillStandardStreams();
        const CommandLine line = ReadCommandLine(count, arguments);
        if (line.help) {
            std::fputs(line.help->c_str(), stdout);
            return WithOutput(stdout, AllCarriedOut);
        }
        return Run(line);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "arvon-console: %s\n", Printable(failure.what()).c_str());
        return CannotStart;
    }
}
