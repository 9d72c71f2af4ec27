#pragma once

#include "desktop/controls/ControlObject.h"
#include "desktop/controls/OptionSheet.h"

#include <QWidget>

#include <optional>

class QLabel;
class QLineEdit;
class QListView;
class QPushButton;

namespace desktop {

class Notice;
class OptionsPage;
class PageList;

/// The options of all tools, a page each, searched and edited. OK sends the whole text once, and closes the
/// window when it was saved; until then nothing outside changes. What others change meanwhile is taken in:
/// the user's own changes stay, and OK overwrites nothing else.
class OptionsPanel final : public QWidget {
public:
    /// `saved` is told the text that OK sent, once it was saved.
    OptionsPanel(const ControlServices& services, std::function<void(const std::string&)> saved);
    ~OptionsPanel() override;

    bool HasChanges() const { return sheet_.Changes() > 0; }
    /// Shows this text, without changes. An empty one has no options; one that cannot be read is told.
    void Load(const std::string& text);
    void Retranslate();

protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QWidget* MakeRightSide();
    void ConnectParts();
    void Search();
    void ShowPage(int row);
    void PutState();
    void FollowOptions();
    /// False when changes of the user were lost over it.
    bool TakeInOutside();
    void ShowPageOf(const std::string& toolId, const QString& focusedOption);
    void Accept();
    /// True when the component has saved the text; false also when this panel has gone meanwhile.
    bool Send(const std::string& options);
    void Cancel();
    void GoTo(std::size_t page, std::size_t field);
    OptionChoices ChoicesOf(const OptionField& field);
    OptionChoices Printers();
    std::string Ask(std::string_view type,
                    std::span<const arvon::host::ParameterRecord> parameters = {}) const;

    ControlServices services_;
    std::function<void(const std::string&)> told_; // of what was saved
    OptionSheet sheet_;
    std::unique_ptr<PageList> pages_;
    std::optional<OptionChoices> printers_; // asked for when a page first shows them
    std::optional<std::size_t> page_;       // shown now
    QString unreadable_;
    std::optional<std::string> given_;   // while the component is asked
    std::optional<std::string> outside_; // changed by others, not taken in yet
    QString lost_;                       // what could not be kept then
    bool asking_ = false;
    bool following_ = false;
    std::optional<std::string> sending_; // the text that is under way
    bool saved_ = false;                 // that text
    bool notSaved_ = false;              // the last text that was sent
    bool searching_ = false;
    QLineEdit* search_;
    QListView* list_;
    QLabel* title_;
    QPushButton* resetPage_;
    OptionsPage* body_;
    QLabel* empty_;
    Notice* state_;
    QPushButton* ok_;
    QPushButton* cancel_;
};

} // namespace desktop
