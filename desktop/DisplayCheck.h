#pragma once

namespace desktop {

/// While it lives, the toolkit's refusal to start without a usable display ends the process with exit status
/// 2 and one line on standard error, in place of an abort. Other messages wait, and are told at the end.
class DisplayCheck {
public:
    DisplayCheck();
    ~DisplayCheck();
    DisplayCheck(const DisplayCheck&) = delete;
    DisplayCheck& operator=(const DisplayCheck&) = delete;
};

} // namespace desktop
