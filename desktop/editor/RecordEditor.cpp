#include "desktop/editor/RecordEditor.h"

#include "base/ComponentError.h"
#include "base/Value.h"
#include "desktop/QtText.h"
#include "desktop/controls/Parts.h"

#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>
#include <utility>
#include <vector>

namespace desktop {

namespace {

namespace text {
constexpr const char* Title = "Edit Program";
constexpr const char* Name = "&Name";
constexpr const char* NameHint = "The name under which the program is listed, different from every other";
constexpr const char* CommandLine = "&Command line";
constexpr const char* CommandLineHint = "What is started: a program, perhaps with arguments. Empty: the "
                                        "program of the catalogue";
constexpr const char* Shown = "&Shown in the list of programs";
constexpr const char* NameMissing = "The program needs a name.";
constexpr const char* NameTaken = "Another program is named \u201c%1\u201d already.";
constexpr const char* Unprintable = "%1 holds a character that cannot be saved (code %2).";
constexpr const char* Refused = "The change was refused: %1";
} // namespace text

constexpr const char* nameMember = "Name";
constexpr const char* shownMember = "ShowInList";
constexpr const char* commandLineMember = "CommandLine";

/// The first character that XML cannot hold; 0 when there is none.
ushort FirstUnprintable(const QString& value) {
    const auto found = std::ranges::find_if(value, [](QChar character) {
        const ushort code = character.unicode();
        return (code < 0x20 && code != '\t') || code == 0xFFFE || code == 0xFFFF;
    });
    return found == value.cend() ? ushort{0} : found->unicode();
}

class RecordDialog final : public QDialog {
public:
    RecordDialog(arvon::IToolRecord& record, QWidget* parent,
                 const std::function<bool(const std::string&)>& isNameTaken)
        : QDialog(parent), record_(record), isNameTaken_(isNameTaken),
          oldName_(ToQt(record.Get(nameMember).ToText())),
          oldCommandLine_(ToQt(record.Get(commandLineMember).ToText())),
          oldShown_(record.Get(shownMember).ToBoolean()), name_(new QLineEdit(oldName_)),
          commandLine_(new QLineEdit(oldCommandLine_)), shown_(new QCheckBox(ToQt(text::Shown))),
          trouble_(new Notice("trouble")),
          buttons_(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel)) {
        setWindowTitle(ToQt(text::Title));
        name_->setObjectName("name");
        name_->setAccessibleName(ToQt(text::Name).remove('&'));
        name_->setAccessibleDescription(ToQt(text::NameHint));
        name_->setToolTip(ToQt(text::NameHint));
        name_->selectAll();
        commandLine_->setObjectName("commandLine");
        commandLine_->setAccessibleName(ToQt(text::CommandLine).remove('&'));
        commandLine_->setAccessibleDescription(ToQt(text::CommandLineHint));
        commandLine_->setToolTip(ToQt(text::CommandLineHint));
        shown_->setObjectName("shown");
        shown_->setAccessibleName(ToQt(text::Shown).remove('&'));
        shown_->setChecked(oldShown_);
        auto* form = new QFormLayout(this);
        form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
        form->addRow(ToQt(text::Name), name_);
        form->addRow(ToQt(text::CommandLine), commandLine_);
        form->addRow(QString(), shown_);
        form->addRow(trouble_);
        form->addRow(buttons_);
        const int wide = fontMetrics().averageCharWidth() * 70;
        setMinimumWidth(std::min(wide, 560));

        for (QLineEdit* edit : {name_, commandLine_})
            connect(edit, &QLineEdit::textChanged, this, [this] { Check(); });
        connect(buttons_, &QDialogButtonBox::accepted, this, [this] { Accept(); });
        connect(buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
        for (QAbstractButton* button : buttons_->buttons())
            button->setAccessibleName(button->text().remove('&'));
        Check();
    }

    bool Changed() const { return changed_; }

private:
    /// A record that was in the wrong already may keep its name.
    QString Trouble() const {
        const QString name = name_->text().trimmed();
        if (name.isEmpty()) return ToQt(text::NameMissing);
        for (const auto& [edit, caption] :
             {std::pair{name_, text::Name}, {commandLine_, text::CommandLine}}) {
            if (const ushort code = FirstUnprintable(edit->text()))
                return ToQt(text::Unprintable).arg(ToQt(caption).remove('&')).arg(code);
        }
        if (name != oldName_ && isNameTaken_ && isNameTaken_(FromQt(name)))
            return ToQt(text::NameTaken).arg(name);
        return {};
    }

    void Check() { ShowTrouble(Trouble(), true); }

    void ShowTrouble(const QString& trouble, bool blocks) {
        trouble_->Put(trouble, Notice::Mark::Warning);
        buttons_->button(QDialogButtonBox::Ok)->setEnabled(!blocks || trouble.isEmpty());
    }

    void Accept() {
        if (!Trouble().isEmpty()) return;
        std::vector<std::pair<const char*, base::Value>> undo;
        const auto put = [&](const char* member, const base::Value& before, const base::Value& after) {
            undo.emplace_back(member, before);
            record_.Set(member, after);
        };
        const QString name = name_->text() == oldName_ ? oldName_ : name_->text().trimmed();
        try {
            if (name != oldName_) put(nameMember, FromQt(oldName_), FromQt(name));
            if (commandLine_->text() != oldCommandLine_)
                put(commandLineMember, FromQt(oldCommandLine_), FromQt(commandLine_->text()));
            if (shown_->isChecked() != oldShown_) put(shownMember, oldShown_, shown_->isChecked());
        } catch (const base::ComponentError& error) {
            TakeBack(undo);
            ShowTrouble(ToQt(text::Refused).arg(ToQt(error.Description())), false);
            return;
        }
        changed_ = !undo.empty();
        accept();
    }

    void TakeBack(std::vector<std::pair<const char*, base::Value>>& undo) {
        for (; !undo.empty(); undo.pop_back()) {
            try {
                record_.Set(undo.back().first, undo.back().second);
            } catch (const base::ComponentError&) {
                // a member that refused its new value holds the old one still
            }
        }
    }

    arvon::IToolRecord& record_;
    const std::function<bool(const std::string&)>& isNameTaken_;
    const QString oldName_, oldCommandLine_;
    const bool oldShown_;
    bool changed_ = false;
    QLineEdit* name_;
    QLineEdit* commandLine_;
    QCheckBox* shown_;
    Notice* trouble_;
    QDialogButtonBox* buttons_;
};

} // namespace

bool EditRecord(arvon::IToolRecord& record, QWidget* parent,
                const std::function<bool(const std::string& name)>& isNameTaken) {
    RecordDialog dialog(record, parent, isNameTaken);
    dialog.exec();
    return dialog.Changed();
}

} // namespace desktop
