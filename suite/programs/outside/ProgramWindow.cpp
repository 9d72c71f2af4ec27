#include "suite/programs/outside/ProgramWindow.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <QVariantAnimation>

#include <cmath>

namespace suite {
namespace {

QString ToQt(const std::string& text) {
    return QString::fromStdString(text);
}

/// A relative name is looked up where the program was started, then beside the program.
QFileInfo FileOf(const QString& document, const OutsideWork& work) {
    const QFileInfo here(document);
    if (here.exists() || here.isAbsolute()) return here;
    return QFileInfo(QDir(ToQt(work.log.parent_path().string())), document);
}

QTreeWidgetItem* RowOf(const QString& document, const OutsideWork& work) {
    const QFileInfo file = FileOf(document, work);
    auto* row = new QTreeWidgetItem({document, QStringLiteral("not found")});
    row->setToolTip(0, file.absoluteFilePath());
    if (file.exists()) {
        row->setText(1, QLocale().formattedDataSize(file.size()));
        row->setText(2, QLocale().toString(file.lastModified(), QLocale::ShortFormat));
    }
    return row;
}

QWidget* TableOf(const OutsideWork& work) {
    auto* table = new QTreeWidget;
    table->setAccessibleName(QStringLiteral("Documents"));
    table->setHeaderLabels({QStringLiteral("Document"), QStringLiteral("Size"), QStringLiteral("Changed")});
    table->setRootIsDecorated(false);
    table->setAlternatingRowColors(true);
    table->header()->setStretchLastSection(false);
    table->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    const int rowHeight = table->fontMetrics().height() * 3 / 2;
    for (const std::string& document : work.documents) {
        QTreeWidgetItem* row = RowOf(ToQt(document), work);
        row->setSizeHint(0, QSize(0, rowHeight));
        table->addTopLevelItem(row);
    }
    return table;
}

QWidget* NoDocuments() {
    auto* text = new QLabel(QStringLiteral("It was started without documents."));
    text->setAlignment(Qt::AlignCenter);
    return text;
}

} // namespace

ProgramWindow::ProgramWindow(const OutsideWork& work) {
    setWindowTitle(ToQt(work.title));
    auto* column = new QVBoxLayout(this);
    AddHead(*column, work);
    column->addWidget(work.documents.empty() ? NoDocuments() : TableOf(work), 1);
    if (work.seconds) AddTime(*column, *work.seconds);
    AddCloseButton(*column);
    resize(560, 320);
}

void ProgramWindow::AddHead(QVBoxLayout& column, const OutsideWork& work) {
    auto* title = new QLabel(windowTitle());
    title->setTextFormat(Qt::PlainText);
    QFont font = title->font();
    font.setPointSizeF(font.pointSizeF() * 1.5);
    font.setBold(true);
    title->setFont(font);
    column.addWidget(title);

    auto* facts = new QFormLayout;
    auto* since =
        new QLabel(QLocale().toString(QDateTime::currentDateTime(), QStringLiteral("d MMMM yyyy, HH:mm:ss")));
    since->setTextInteractionFlags(Qt::TextSelectableByMouse);
    facts->addRow(QStringLiteral("Running since:"), since);
    auto* log = new QLineEdit(ToQt(work.log.string())); // can be copied, and scrolls
    log->setReadOnly(true);
    log->setCursorPosition(0);
    facts->addRow(QStringLiteral("&Log:"), log);
    column.addLayout(facts);
}

void ProgramWindow::AddTime(QVBoxLayout& column, double seconds) {
    const int milliseconds = static_cast<int>(std::ceil(seconds * 1000));
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, this, &QWidget::close);

    auto* left = new QProgressBar;
    left->setAccessibleName(QStringLiteral("Progress"));
    left->setRange(0, milliseconds);
    left->setFormat(QStringLiteral("%p %"));
    auto* progress = new QVariantAnimation(this);
    progress->setStartValue(0);
    progress->setEndValue(milliseconds);
    progress->setDuration(milliseconds);
    connect(progress, &QVariantAnimation::valueChanged, left,
            [left](const QVariant& passed) { left->setValue(passed.toInt()); });
    progress->start();
    column.addWidget(left);
}

void ProgramWindow::AddCloseButton(QVBoxLayout& column) {
    auto* button = new QPushButton(QStringLiteral("&Close"));
    button->setAccessibleName(QStringLiteral("Close ") + windowTitle());
    button->setAutoDefault(true); // the Enter key
    connect(button, &QPushButton::clicked, this, &QWidget::close);
    column.addWidget(button, 0, Qt::AlignRight);
    button->setFocus();
    new QShortcut(QKeySequence::Close, this, this, &QWidget::close);
}

} // namespace suite
