#pragma once

#include "console/Words.h"
#include "core/contract/Tools.h"

#include <optional>
#include <string>
#include <vector>

namespace arvon::console {

/// Answers in the place of the user when the host asks for a record to be edited.
class RecordEdits {
public:
    /// What the next question is answered by, once: the record of that name gets these values.
    void Plan(std::string name, std::vector<NamedValue> changes);
    /// The host's question; true when the record was changed. Without a plan it was not. Where the record is
    /// another one or refuses a value, nothing is changed.
    bool Answer(IToolRecord& record);
    /// Why the last question could not be answered as planned, told once; empty when it could.
    std::string TakeProblem();

private:
    struct Planned {
        std::string name;
        std::vector<NamedValue> changes;
    };

    std::optional<Planned> planned_;
    std::string problem_;
};

} // namespace arvon::console
