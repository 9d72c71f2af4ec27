#pragma once

#include "core/ToolMain.h"

#include <string>

namespace kvtm {

/// How an error description begins that is about a tool; empty where even its name cannot be read, as the
/// first failure is the one to tell.
inline std::string AboutTool(const ToolRecord& tool) {
    try {
        return "tool \"" + tool->Name() + "\": ";
    } catch (const base::ComponentError&) {
        return {};
    }
}

/// What `step` gives, which takes a value of a tool's record. Its failure names the tool, so that the one bad
/// record among many is found; number and source stay.
template <class Step> auto NamingToolOnFailure(const ToolRecord& tool, const Step& step) {
    try {
        return step();
    } catch (const base::ComponentError& error) {
        throw base::ComponentError(error.Number(), error.Source(), AboutTool(tool) + error.Description());
    }
}

} // namespace kvtm
