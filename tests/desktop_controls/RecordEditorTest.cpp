#include "desktop/editor/RecordEditor.h"

#include "base/ComponentError.h"
#include "base/Text.h"
#include "tests/desktop_controls/Support.h"

#include <gmock/gmock.h>

namespace desktop::test {

namespace {

using testing::HasSubstr;

/// A record in memory, that may refuse one of its members.
class Record final : public arvon::IToolRecord {
public:
    std::string name = "Layout", commandLine = "C:\\QUARRA\\Tobr43\\Tobr43.exe";
    bool shown = true;
    std::string refused;
    std::vector<std::string> set;

    std::string Name() const override { return name; }
    std::string Classification() const override { return {}; }
    bool ShowInList() const override { return shown; }
    base::Value Get(std::string_view member) const override {
        if (base::EqualIgnoringCase(member, "Name")) return name;
        if (base::EqualIgnoringCase(member, "CommandLine")) return commandLine;
        if (base::EqualIgnoringCase(member, "ShowInList")) return shown;
        NoSuchMember(member);
    }
    void Set(std::string_view member, const base::Value& value) override {
        if (member == refused) throw base::ComponentError(base::errors::InvalidCall, "host", "not this one");
        set.emplace_back(member);
        if (member == "Name") name = value.ToText();
        if (member == "CommandLine") commandLine = value.ToText();
        if (member == "ShowInList") shown = value.ToBoolean();
    }
};

class RecordEditorTest : public testing::Test {
protected:
    /// Runs the editor, with `work` done while it is open; what `work` leaves open is cancelled.
    bool Edit(const std::function<void(QDialog&)>& work) {
        QTimer::singleShot(0, [&] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog);
            QApplication::setActiveWindow(dialog);
            work(*dialog);
            if (dialog->isVisible()) dialog->reject();
        });
        return EditRecord(record, nullptr, [](const std::string& name) { return name == "Plot Queue"; });
    }
    static void Type(QDialog& dialog, const QString& field, const QString& text) {
        auto& line = Child<QLineEdit>(dialog, field);
        line.setFocus();
        line.selectAll();
        if (text.isEmpty()) {
            QTest::keyClick(&line, Qt::Key_Delete);
        } else {
            QTest::keyClicks(&line, text);
        }
    }
    static QPushButton& Ok(QDialog& dialog) {
        return *dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    }

    Record record;
};

} // namespace

TEST_F(RecordEditorTest, OkChangesWhatWasEditedAndNothingElse) {
    EXPECT_TRUE(Edit([](QDialog& dialog) {
        EXPECT_EQ(Unnamed(dialog), QStringList());
        TakePictures(dialog, "editor");
        Type(dialog, "name", "Layout 2");
        Click(Child<QCheckBox>(dialog, "shown"));
        QTest::keyClick(&dialog, Qt::Key_Return);
    }));
    EXPECT_EQ(record.name, "Layout 2");
    EXPECT_FALSE(record.shown);
    EXPECT_THAT(record.set, testing::ElementsAre("Name", "ShowInList"));
}

TEST_F(RecordEditorTest, CancelChangesNothing) {
    EXPECT_FALSE(Edit([](QDialog& dialog) {
        Type(dialog, "name", "Layout 2");
        QTest::keyClick(&dialog, Qt::Key_Escape);
    }));
    EXPECT_TRUE(record.set.empty());
}

TEST_F(RecordEditorTest, OkWithoutAChangeIsNothingToSave) {
    EXPECT_FALSE(Edit([](QDialog& dialog) { Click(Ok(dialog)); }));
    EXPECT_TRUE(record.set.empty());
}

TEST_F(RecordEditorTest, AnEmptyNameIsRefused) {
    EXPECT_FALSE(Edit([](QDialog& dialog) {
        for (const char* name : {"", "   "}) {
            Type(dialog, "name", name);
            EXPECT_FALSE(Ok(dialog).isEnabled());
            EXPECT_EQ(Child<QLabel>(dialog, "trouble").text(), "The program needs a name.");
        }
        QTest::keyClick(&Child<QLineEdit>(dialog, "name"), Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible());
    }));
}

TEST_F(RecordEditorTest, TheNameOfAnotherToolIsRefused) {
    EXPECT_FALSE(Edit([](QDialog& dialog) {
        Type(dialog, "name", " Plot Queue ");
        EXPECT_FALSE(Ok(dialog).isEnabled());
        EXPECT_THAT(Child<QLabel>(dialog, "trouble").text().toStdString(),
                    HasSubstr("\u201cPlot Queue\u201d already"));
        EXPECT_EQ(Unnamed(dialog), QStringList());
        TakePictures(dialog, "editor-trouble");
        Type(dialog, "name", "plot queue");
        EXPECT_TRUE(Ok(dialog).isEnabled()) << "names differ by letter case";
    }));
}

TEST_F(RecordEditorTest, BlanksAroundANameAreTakenAway) {
    EXPECT_TRUE(Edit([](QDialog& dialog) {
        Type(dialog, "name", "  New  name ");
        Click(Ok(dialog));
    }));
    EXPECT_EQ(record.name, "New  name");
}

TEST_F(RecordEditorTest, CharactersThatNoFileHoldsAreRefused) {
    EXPECT_FALSE(Edit([](QDialog& dialog) {
        Child<QLineEdit>(dialog, "commandLine").setText(QString("a") + QChar(0x01));
        EXPECT_FALSE(Ok(dialog).isEnabled());
        EXPECT_THAT(Child<QLabel>(dialog, "trouble").text().toStdString(), HasSubstr("code 1"));
    }));
}

TEST_F(RecordEditorTest, ARefusedChangeTakesTheOthersBack) {
    record.refused = "CommandLine";
    EXPECT_FALSE(Edit([](QDialog& dialog) {
        Type(dialog, "name", "Layout 2");
        Type(dialog, "commandLine", "other.exe");
        Click(Ok(dialog));
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_THAT(Child<QLabel>(dialog, "trouble").text().toStdString(), HasSubstr("not this one"));
    }));
    EXPECT_EQ(record.name, "Layout");
    EXPECT_EQ(record.commandLine, "C:\\QUARRA\\Tobr43\\Tobr43.exe");
}

} // namespace desktop::test
