#pragma once

#include "console/Runs.h"
#include "console/Writer.h"
#include "host/ReferenceHost.h"

#include <string>
#include <string_view>

namespace arvon::console {

/// A part of the host's model, or the runs, as `show` prints it. Throws CommandError for a name that is no
/// part.
Json SnapshotOf(const host::ReferenceHost::ModelView& model, const Runs& runs, std::string_view what);
/// The names of the parts, for help: "tools, list, ...".
std::string SnapshotNames();

} // namespace arvon::console
