#include "desktop/editor/RecordEditor.h"

#include "base/ComponentError.h"
#include "base/Value.h"
#include "desktop/QtText.h"
#include "desktop/controls/Parts.h"
#include "desktop/editor/EditorTexts.h"

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
          commandLine_(new QLineEdit(oldCommandLine_)), shown_(new QCheckBox(text::Of(text::editor::Shown))),
          trouble_(new Notice("trouble")),
          buttons_(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel)) {
        setWindowTitle(text::Of(text::editor::Title));
        name_->setObjectName("name");
        name_->setAccessibleName(text::Of(text::editor::Name).remove('&'));
        name_->setAccessibleDescription(text::Of(text::editor::NameHint));
        name_->setToolTip(text::Of(text::editor::NameHint));
        name_->selectAll();
        commandLine_->setObjectName("commandLine");
        commandLine_->setAccessibleName(text::Of(text::editor::CommandLine).remove('&'));
        commandLine_->setAccessibleDescription(text::Of(text::editor::CommandLineHint));
        commandLine_->setToolTip(text::Of(text::editor::CommandLineHint));
        shown_->setObjectName("shown");
        shown_->setAccessibleName(text::Of(text::editor::Shown).remove('&'));
        shown_->setChecked(oldShown_);
        auto* form = new QFormLayout(this);
        form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
        form->addRow(text::Of(text::editor::Name), name_);
        form->addRow(text::Of(text::editor::CommandLine), commandLine_);
        form->addRow(QString(), shown_);
        form->addRow(trouble_);
        buttons_->button(QDialogButtonBox::Ok)->setText(text::Of(text::editor::Ok));
        buttons_->button(QDialogButtonBox::Cancel)->setText(text::Of(text::editor::Cancel));
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
        if (name.isEmpty()) return text::Of(text::editor::NameMissing);
        for (const auto& [edit, caption] :
             {std::pair{name_, text::editor::Name}, {commandLine_, text::editor::CommandLine}}) {
            if (const ushort code = FirstUnprintable(edit->text()))
                return text::Of(text::editor::Unprintable).arg(text::Of(caption).remove('&')).arg(code);
        }
        if (name != oldName_ && isNameTaken_ && isNameTaken_(FromQt(name)))
            return text::Of(text::editor::NameTaken).arg(name);
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
            ShowTrouble(text::Of(text::editor::Refused).arg(ToQt(error.Description())), false);
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
