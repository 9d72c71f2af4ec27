#include "launch/RemovalFiles.h"

#include "base/Text.h"

#include <algorithm>
#include <iterator>

namespace kvtm {

bool IsRemovableProgramType(std::string_view programType) {
    static constexpr std::string_view types[] = {"ORDIX", "VANTOR", "QUARRA", "PLEXA"};
    const std::string type(base::TrimBlanks(base::UpperCase(programType)));
    return std::find(std::begin(types), std::end(types), type) != std::end(types);
}

RemovalFiles RemovalFilesOf(std::string_view installPath, std::string_view vrex) {
    const std::string suite(base::FirstCharacters(base::TrimBlanks(installPath), 3));
    const std::string programs = suite + "QUARRA\\";
    const std::string shared = programs + "Enviro\\";
    return {
        .log = programs + std::string(vrex) + "\\Install.log",
        .instruction = shared + "Remove.ini",
        .program = shared + "KT4-RemoveProgram.exe",
        .result = shared + "ResultOK.txt",
    };
}

std::string RemoveIniText(std::string_view vrex, std::string_view name, std::string_view logFile) {
    std::string text = "[Program]\r\n";
    const auto line = [&](std::string_view key, std::string_view value) {
        text += key;
        text += '=';
        text += value;
        text += "\r\n";
    };
    line("VREX", vrex);
    line("Name", name);
    line("Logfile", logFile);
    return text;
}

} // namespace kvtm
