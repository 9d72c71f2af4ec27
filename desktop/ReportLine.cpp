#include "desktop/ReportLine.h"

#include "desktop/Texts.h"

#include <QAccessible>
#include <QPainter>
#include <QStatusBar>
#include <QStringList>
#include <QStyle>

namespace desktop {

namespace {

/// As many as a tool tip has room for; the message trace holds the others.
constexpr std::size_t mostReports = 8;

QString WholeOf(const FailureReport& report) {
    QStringList lines;
    const auto add = [&](const QString& line, const QString& content) {
        if (!content.isEmpty()) lines.append(line);
    };
    add(report.description, report.description);
    add(text::Of(text::status::ReportSource).arg(report.source), report.source);
    add(text::Of(text::status::ReportNumber).arg(report.number), report.number);
    add(text::Of(text::status::ReportProcedure).arg(report.procedure), report.procedure);
    return lines.join(u'\n');
}

} // namespace

ReportLine::ReportLine() {
    setObjectName(QStringLiteral("report"));
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // a long text makes no window wide
    text::Follow(this, [this] { Put(); });
}

void ReportLine::Add(const FailureReport& report) {
    ++count_;
    if (reports_.size() < mostReports) reports_.push_back(report);
    Put();
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void ReportLine::Clear() {
    if (count_ == 0) return;
    count_ = 0;
    reports_.clear();
    Put();
}

void ReportLine::Put() {
    const QString whole = Whole();
    setText(Line());
    setAccessibleDescription(whole);
    QString toolTip = whole.toHtmlEscaped();
    if (!whole.isEmpty()) toolTip = QStringLiteral("<qt>") + toolTip.replace(u'\n', QLatin1String("<br>"));
    setToolTip(toolTip);
}

QString ReportLine::Line() const {
    if (reports_.empty()) return {};
    const QString description = reports_.front().description.simplified();
    if (count_ == 1) return text::Of(text::status::Report).arg(description);
    return text::Of(text::status::Reports).arg(description, QString::number(count_));
}

QString ReportLine::Whole() const {
    QStringList paragraphs;
    for (const FailureReport& report : reports_)
        paragraphs.append(WholeOf(report));
    const qsizetype others = count_ - static_cast<qsizetype>(reports_.size());
    if (others > 0) paragraphs.append(text::Of(text::status::MoreReports).arg(others));
    return paragraphs.join(QLatin1String("\n\n"));
}

void ReportLine::paintEvent(QPaintEvent*) {
    // a message that came before the window was shown did not hide the line
    const auto* bar = qobject_cast<const QStatusBar*>(parentWidget());
    if (text().isEmpty() || (bar && !bar->currentMessage().isEmpty())) return;
    QPainter painter(this);
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
    const QRect mark =
        QStyle::alignedRect(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter, QSize(size, size), rect());
    style()->standardIcon(QStyle::SP_MessageBoxCritical).paint(&painter, mark);
    const QRect place =
        QStyle::visualRect(layoutDirection(), rect(), rect().adjusted(size + size / 4, 0, 0, 0));
    style()->drawItemText(
        &painter, place,
        static_cast<int>(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter)),
        palette(), isEnabled(), fontMetrics().elidedText(text(), Qt::ElideRight, place.width()),
        foregroundRole());
}

} // namespace desktop
