#pragma once

#include "suite/programs/outside/OutsideWork.h"

#include <QWidget>

class QVBoxLayout;

namespace suite {

/// An outside program's window: its documents, since when it runs, where its log is, and, when it works for a
/// given time only, what is left of that. It closes itself when the time has passed.
class ProgramWindow final : public QWidget {
public:
    explicit ProgramWindow(const OutsideWork& work);

private:
    void AddHead(QVBoxLayout& column, const OutsideWork& work);
    void AddTime(QVBoxLayout& column, double seconds);
    void AddCloseButton(QVBoxLayout& column);
};

} // namespace suite
