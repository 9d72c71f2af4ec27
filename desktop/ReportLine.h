#pragma once

#include "desktop/FailureReport.h"

#include <QLabel>

#include <vector>

namespace desktop {

/// The failures that the last action brought: the first of them, which is mostly the cause of the others, on
/// one line; all of them, whole, as the tool tip.
class ReportLine final : public QLabel {
public:
    ReportLine();

    void Add(const FailureReport& report);
    void Clear();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void Put();
    QString Line() const;
    QString Whole() const;

    std::vector<FailureReport> reports_; // the first ones
    qsizetype count_ = 0;
};

} // namespace desktop
