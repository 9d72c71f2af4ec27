#pragma once

#include "desktop/controls/OptionSheet.h"

#include <QWidget>

#include <functional>

class QGridLayout;
class QLabel;
class QToolButton;

namespace desktop {

class Notice;

/// What a row knows of the option that it shows.
struct OptionRowSource {
    std::function<const OptionField&()> field;
    std::function<void(std::string value)> set;
    std::function<void()> reset;
    std::function<OptionChoices()> choices; // for options of kind Choice and Radio
    std::function<QString()> trouble, warning;
};

/// One option on a page: its label, what edits it, whether it is changed, and what is wrong with it. The
/// editor's object name is the option's.
class OptionRow final : public QWidget {
public:
    OptionRow(OptionRowSource source, int labelWidth);

    /// Shows the option as it stands now.
    void Refresh();
    void FocusEditor();
    void SetLabelWidth(int width);

private:
    void MakeNote(const OptionField& field, QGridLayout& grid);
    QWidget* MakeEditor(const OptionField& field);
    QWidget* MakeCheck(const OptionField& field);
    QWidget* MakeSwitch(const OptionField& field);
    QWidget* MakeRadios(const OptionField& field, const OptionChoices& choices);
    QWidget* MakeCombo(const OptionField& field, const OptionChoices& choices);
    QWidget* MakeLine(const OptionField& field);
    QWidget* MakeLines(const OptionField& field);
    void RefreshNotice();

    OptionRowSource source_;
    QWidget* editor_ = nullptr; // null for a note
    QLabel* marker_ = nullptr;
    QLabel* label_ = nullptr;
    QToolButton* reset_ = nullptr;
    Notice* notice_ = nullptr;
    std::function<void(const std::string& value)> put_; // shows a value in the editor
};

} // namespace desktop
