#pragma once

#include "desktop/controls/OptionSheet.h"

#include <QScrollArea>

#include <functional>
#include <vector>

class QVBoxLayout;

namespace desktop {

class OptionRow;

/// Options of one tool, below each other. Only the rows near those in sight exist, so that a page may have
/// any number of options.
class OptionsPage final : public QScrollArea {
public:
    using Choices = std::function<OptionChoices(const OptionField&)>;

    OptionsPage(OptionSheet& sheet, Choices choices);

    /// These fields of a page of the sheet, from the top.
    void ShowFields(std::size_t page, std::vector<std::size_t> fields);
    void Clear();
    /// Shows the values as they stand now.
    void RefreshRows();
    /// Scrolls there and puts the cursor into it; the field must be among those shown.
    void FocusField(std::size_t field);
    /// Behind which widget the rows come when the user tabs along.
    void SetTabAnchor(QWidget* anchor) { anchor_ = anchor; }
    /// Called after the user changed a value.
    void OnEdited(std::function<void()> edited) { edited_ = std::move(edited); }
    /// How many rows exist at the moment.
    std::size_t RowsMade() const;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    /// Neighbouring rows that come and go together; without rows a place of their height.
    struct Chunk {
        std::size_t first = 0, count = 0; // in fields_
        QWidget* holder = nullptr;
        std::vector<OptionRow*> rows;
        int height = 0; // as far as known
    };

    void MakeSight();
    bool MakeChunksBetween(int top, int bottom);
    void ReleaseChunksOutside(int top, int bottom);
    void Make(Chunk& chunk);
    void Release(Chunk& chunk);
    OptionRow* MakeRow(std::size_t field);
    void RefreshAfterChange(std::size_t field);
    void OrderTabs();
    int LabelWidth() const;
    void Measure(Chunk& chunk);

    OptionSheet& sheet_;
    Choices choices_;
    std::function<void()> edited_;
    QWidget* anchor_ = nullptr;
    std::size_t page_ = 0;
    std::vector<std::size_t> fields_;
    std::vector<Chunk> chunks_;
    QVBoxLayout* column_ = nullptr;
    int widestLabel_ = 0;
    int rowHeight_ = 32; // of the rows measured last
    bool making_ = false;
};

} // namespace desktop
