#include "desktop/controls/OptionsPage.h"

#include "desktop/QtText.h"
#include "desktop/controls/OptionRow.h"

#include <QApplication>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>

namespace desktop {

namespace {

constexpr std::size_t rowsOfChunk = 20;
constexpr std::size_t measuredLabels = 500;
constexpr int widestShare = 45; // percent of the page for labels

} // namespace

OptionsPage::OptionsPage(OptionSheet& sheet, Choices choices) : sheet_(sheet), choices_(std::move(choices)) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this] { MakeSight(); });
}

void OptionsPage::Clear() {
    ShowFields(0, {});
}

void OptionsPage::ShowFields(std::size_t page, std::vector<std::size_t> fields) {
    page_ = page;
    fields_ = std::move(fields);
    chunks_.clear();
    auto* content = new QWidget;
    column_ = new QVBoxLayout(content);
    column_->setContentsMargins(0, 0, 4, 0);
    column_->setSpacing(0);
    widestLabel_ = 0;
    for (std::size_t index = 0; index < std::min(fields_.size(), measuredLabels); ++index) {
        const OptionField& field = sheet_.Field(page_, fields_[index]);
        if (field.kind == OptionKind::Check || field.kind == OptionKind::Note) continue;
        QFont bold = font();
        bold.setBold(true);
        widestLabel_ = std::max(widestLabel_, QFontMetrics(bold).horizontalAdvance(field.label) + 4);
    }
    for (std::size_t first = 0; first < fields_.size(); first += rowsOfChunk) {
        Chunk chunk;
        chunk.first = first;
        chunk.count = std::min(rowsOfChunk, fields_.size() - first);
        chunk.height = static_cast<int>(chunk.count) * rowHeight_;
        chunk.holder = new QWidget;
        chunk.holder->setFixedHeight(chunk.height);
        column_->addWidget(chunk.holder);
        chunks_.push_back(std::move(chunk));
    }
    column_->addStretch();
    setWidget(content); // deletes the one before, and its rows
    verticalScrollBar()->setValue(0);
    MakeSight();
}

int OptionsPage::LabelWidth() const {
    return std::min(widestLabel_, viewport()->width() * widestShare / 100);
}

void OptionsPage::MakeSight() {
    if (making_ || !isVisible()) return;
    const QScopedValueRollback guard(making_, true);
    const int height = viewport()->height();
    bool made = false;
    // what is made may be lower than was thought, and bring more into sight
    for (int round = 0; round < 8; ++round) {
        const int top = verticalScrollBar()->value();
        if (!MakeChunksBetween(top - height, top + 2 * height)) break;
        made = true;
    }
    const int top = verticalScrollBar()->value();
    ReleaseChunksOutside(top - 4 * height, top + 5 * height);
    if (made) OrderTabs();
}

bool OptionsPage::MakeChunksBetween(int top, int bottom) {
    int position = 0;
    bool made = false;
    for (Chunk& chunk : chunks_) {
        const int end = position + chunk.height;
        if (chunk.rows.empty() && end >= top && position <= bottom) {
            Make(chunk);
            made = true;
        }
        position = end;
    }
    return made;
}

void OptionsPage::ReleaseChunksOutside(int top, int bottom) {
    const QWidget* focused = QApplication::focusWidget();
    int position = 0;
    for (Chunk& chunk : chunks_) {
        const int end = position + chunk.height;
        const bool outside = end < top || position > bottom;
        if (outside && !chunk.rows.empty() && !(focused && chunk.holder->isAncestorOf(focused)))
            Release(chunk);
        position = end;
    }
}

void OptionsPage::Make(Chunk& chunk) {
    auto* rows = new QVBoxLayout(chunk.holder);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(2);
    for (std::size_t index = chunk.first; index < chunk.first + chunk.count; ++index) {
        OptionRow* row = MakeRow(fields_[index]);
        rows->addWidget(row);
        row->show(); // at once: what is not shown counts for nothing in the height
        chunk.rows.push_back(row);
    }
    Measure(chunk);
}

void OptionsPage::Measure(Chunk& chunk) {
    QLayout* rows = chunk.holder->layout();
    rows->invalidate();
    const int width = std::max(viewport()->width() - 4, 1);
    chunk.height =
        rows->hasHeightForWidth() ? rows->totalHeightForWidth(width) : rows->totalSizeHint().height();
    rowHeight_ = std::max(chunk.height / static_cast<int>(chunk.count), 1);
    chunk.holder->setFixedHeight(chunk.height);
}

void OptionsPage::Release(Chunk& chunk) {
    for (OptionRow* row : chunk.rows) {
        row->hide();
        row->deleteLater(); // one of them may be at work
    }
    chunk.rows.clear();
    delete chunk.holder->layout();
}

OptionRow* OptionsPage::MakeRow(std::size_t field) {
    const auto shown = [this, page = page_, field]() -> const OptionField& {
        return sheet_.Field(page, field);
    };
    OptionRowSource source;
    source.field = shown;
    source.set = [this, page = page_, field](std::string value) {
        sheet_.SetValue(page, field, std::move(value));
        RefreshAfterChange(field);
        if (edited_) edited_();
    };
    source.reset = [this, page = page_, field] {
        sheet_.Reset(page, field);
        RefreshAfterChange(field);
        if (edited_) edited_();
    };
    source.choices = [this, shown] { return choices_ ? choices_(shown()) : OptionChoices(); };
    source.trouble = [this, shown] { return sheet_.TroubleOf(shown()); };
    source.warning = [this, shown] { return sheet_.WarningOf(shown()); };
    return new OptionRow(std::move(source), LabelWidth());
}

void OptionsPage::RefreshAfterChange(std::size_t field) {
    if (sheet_.Field(page_, field).radioGroup >= 0) { // others may have changed with it
        RefreshRows();
        return;
    }
    for (Chunk& chunk : chunks_) {
        for (std::size_t index = 0; index < chunk.rows.size(); ++index) {
            if (fields_[chunk.first + index] != field) continue;
            chunk.rows[index]->Refresh();
            Measure(chunk);
            return;
        }
    }
}

void OptionsPage::RefreshRows() {
    for (Chunk& chunk : chunks_) {
        if (chunk.rows.empty()) continue;
        for (OptionRow* row : chunk.rows)
            row->Refresh();
        Measure(chunk);
    }
}

void OptionsPage::OrderTabs() {
    QWidget* last = anchor_;
    if (!last || last->window() != window()) return;
    for (const Chunk& chunk : chunks_) {
        for (const OptionRow* row : chunk.rows) {
            for (QWidget* part : row->findChildren<QWidget*>()) {
                const bool inside = part->parentWidget()->inherits("QComboBox") || part->window() != window();
                if (inside || !(part->focusPolicy() & Qt::TabFocus)) continue;
                QWidget::setTabOrder(last, part);
                last = part;
            }
        }
    }
}

void OptionsPage::FocusField(std::size_t field) {
    const auto found = std::ranges::find(fields_, field);
    if (found == fields_.end()) return;
    const auto place = static_cast<std::size_t>(found - fields_.begin());
    const auto isOf = [&](const Chunk& chunk) { return place < chunk.first + chunk.count; };
    int position = 0;
    for (Chunk& chunk : chunks_) {
        if (!isOf(chunk)) {
            position += chunk.height;
            continue;
        }
        widget()->layout()->activate();
        verticalScrollBar()->setValue(position + static_cast<int>(place - chunk.first) * rowHeight_);
        if (chunk.rows.empty()) {
            Make(chunk);
            OrderTabs();
        }
        OptionRow* row = chunk.rows[place - chunk.first];
        row->FocusEditor();
        ensureWidgetVisible(row);
        return;
    }
}

std::size_t OptionsPage::RowsMade() const {
    std::size_t made = 0;
    for (const Chunk& chunk : chunks_)
        made += chunk.rows.size();
    return made;
}

void OptionsPage::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    for (Chunk& chunk : chunks_) {
        if (chunk.rows.empty()) continue;
        for (OptionRow* row : chunk.rows)
            row->SetLabelWidth(LabelWidth());
        Measure(chunk);
    }
    MakeSight();
}

void OptionsPage::showEvent(QShowEvent* event) {
    QScrollArea::showEvent(event);
    MakeSight();
}

} // namespace desktop
