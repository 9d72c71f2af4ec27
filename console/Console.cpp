#include "console/Console.h"

#include "base/ComponentError.h"
#include "console/CommandTable.h"
#include "console/LineSource.h"
#include "console/RecordEdits.h"
#include "console/Words.h"

#include <exception>

namespace arvon::console {

Console::Console(host::ReferenceHost& host, Writer& writer, RecordEdits& edits, std::filesystem::path library)
    : host_(host), writer_(writer), edits_(edits), library_(std::move(library)) {
    for (const std::string& problem : host_.Problems()) // of opening the installation
        writer_.OnProblem(problem);
    host_.Subscribe(runs_);
    host_.Subscribe(writer_);
}

Console::~Console() {
    host_.Unsubscribe(writer_);
    host_.Unsubscribe(runs_);
}

bool Console::Run(LineSource& lines, bool isTyped) {
    while (!quit_) {
        const std::optional<std::string> line = lines.Next();
        if (!line) break;
        if (!isTyped) writer_.OnScriptLine(*line);
        Execute(*line);
    }
    return allCarriedOut_;
}

void Console::Execute(std::string_view line) {
    command_.clear();
    try {
        const std::vector<std::string> words = SplitWords(line);
        if (words.empty()) return;
        command_ = words.front();
        CarryOut(words);
        writer_.OnDone(command_);
    } catch (const CommandError& failure) {
        RefuseCommand(failure.Text());
    } catch (const base::ComponentError& failure) {
        RefuseCommand(failure.Description());
    } catch (const std::exception& failure) {
        RefuseCommand(failure.what());
    }
}

void Console::RefuseCommand(std::string_view text) {
    allCarriedOut_ = false;
    writer_.OnError(command_, text);
}

void Console::CarryOut(Words words) {
    const Command& command = FindCommand(words.front());
    const Words arguments = words.subspan(1);
    if (arguments.size() < command.LeastWords() || arguments.size() > command.MostWords())
        throw CommandError("expected: " + command.Usage());
    (this->*command.run)(arguments);
    if (const std::string problem = edits_.TakeProblem(); !problem.empty()) throw CommandError(problem);
}

} // namespace arvon::console
