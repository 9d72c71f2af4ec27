#pragma once

#include <QString>

namespace desktop {

/// What a component told the host of a failure, by the event "ErrorMessage".
struct FailureReport {
    QString description, source, number, procedure;
};

} // namespace desktop
