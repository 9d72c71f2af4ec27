#include "console/CommandLine.h"

#include "console/CommandTable.h"
#include "console/Snapshot.h"

#include <CLI/CLI.hpp>

namespace arvon::console {

namespace {

std::string Footer() {
    return "Commands, one a line; words are split as a shell splits them, # starts a comment:\n" +
           CommandHelp() + "\nshow prints one of: " + SnapshotNames() +
           R"(

With --json every line is one object whose "is" tells what it is: call, message, messageReply, messageBox,
pointer, process, problem, reply, state, help, done, error. A request's message line stands where it was
delivered. Its "reply" is the answer, unless something else happened before the answer came: then it is empty,
and an answer that is not empty follows in a messageReply line (to a request command: in its reply line).

Exit status: 0 when every command was carried out, 1 when one was not (the rest still run) or the output
could not be written, 2 for a bad command line, script or suite.)";
}

} // namespace

CommandLine ReadCommandLine(int count, const char* const* arguments) {
    CommandLine line;
    CLI::App app("Runs KvTM10, the tool manager, in the reference host and drives it from text.",
                 "arvon-console");
    app.add_option("--suite", line.suite,
                   "the installation to work on, changed in place (a fresh copy of the sample suite)")
        ->type_name("DIR");
    app.add_option("--profile", line.profile, "the user's profile: a number or a text")->type_name("ID");
    app.add_flag("--json", line.json, "every output line is one JSON object");
    app.add_flag("--quiet", line.quiet, "leaves out the calls that KvTM10 makes on the host");
    app.add_option("SCRIPT", line.script, "a file of commands (standard input)")->type_name(" ");
    app.footer(Footer());
    try {
        app.parse(count, arguments);
    } catch (const CLI::CallForHelp&) {
        line.help = app.help();
    } catch (const CLI::ParseError& failure) {
        throw BadCommandLine(std::string(failure.what()) + " (see --help)");
    }
    return line;
}

} // namespace arvon::console
