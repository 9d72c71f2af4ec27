// What is in an outside program's window.

#include "suite/programs/outside/ProgramWindow.h"
#include "tests/support/TestFolder.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>
#include <gtest/gtest.h>

#include <memory>

namespace suite::test {
namespace {

class ProgramWindows : public testing::Test {
protected:
    static void SetUpTestSuite() {
        static int count = 1;
        static char name[] = "suite_window_tests";
        static char* words[] = {name, nullptr};
        application_ = new QApplication(count, words);
    }
    static void TearDownTestSuite() { delete application_; }

    std::unique_ptr<ProgramWindow> Shown(std::vector<std::string> documents = {},
                                         std::optional<double> seconds = {}) {
        auto window = std::make_unique<ProgramWindow>(
            OutsideWork{"Plot & Queue", std::move(documents), seconds, folder / "Tobr44.log"});
        window->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        return window;
    }

    TestFolder folder;

private:
    static inline QApplication* application_ = nullptr;
};

TEST_F(ProgramWindows, TellTheirTitleAndTheLogsPlace) {
    const auto window = Shown();
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Plot & Queue"));
    EXPECT_EQ(window->findChild<QLabel*>()->text(), QStringLiteral("Plot & Queue"));
    const auto* log = window->findChild<QLineEdit*>();
    ASSERT_NE(log, nullptr);
    EXPECT_EQ(log->text().toStdString(), (folder / "Tobr44.log").string());
    EXPECT_TRUE(log->isReadOnly());
}

TEST_F(ProgramWindows, ListTheDocumentsThatAreThereAndThoseThatAreNot) {
    folder.Write("Ground floor.qdr", "drawn");
    const std::string elsewhere = folder.Write("Plans/First floor.qdr", std::string(2048, 'x')).string();
    const auto window = Shown({"Ground floor.qdr", elsewhere, "Cellar.qdr"});
    auto* table = window->findChild<QTreeWidget*>();
    ASSERT_NE(table, nullptr);
    ASSERT_EQ(table->topLevelItemCount(), 3);
    const auto text = [&](int row, int column) {
        return table->topLevelItem(row)->text(column).toStdString();
    };
    EXPECT_EQ(text(0, 0), "Ground floor.qdr");
    EXPECT_EQ(text(0, 1), "5 bytes");
    EXPECT_NE(text(0, 2), "");
    EXPECT_EQ(text(1, 0), elsewhere);
    EXPECT_EQ(text(1, 1), "2.00 KiB");
    EXPECT_EQ(text(2, 0), "Cellar.qdr");
    EXPECT_EQ(text(2, 1), "not found");
    EXPECT_EQ(text(2, 2), "");
}

TEST_F(ProgramWindows, HaveNamesForScreenReaders) {
    const auto window = Shown({"Ground floor.qdr"}, 600);
    EXPECT_EQ(window->findChild<QPushButton*>()->accessibleName(), QStringLiteral("Close Plot & Queue"));
    EXPECT_EQ(window->findChild<QTreeWidget*>()->accessibleName(), QStringLiteral("Documents"));
    EXPECT_EQ(window->findChild<QProgressBar*>()->accessibleName(), QStringLiteral("Progress"));
}

TEST_F(ProgramWindows, CloseByTheirButton) {
    const auto window = Shown();
    QTest::mouseClick(window->findChild<QPushButton*>(), Qt::LeftButton);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(ProgramWindows, ShowHowMuchOfTheirTimeHasPassedAndClose) {
    const auto window = Shown({}, 1.2);
    const auto* bar = window->findChild<QProgressBar*>();
    ASSERT_NE(bar, nullptr);
    EXPECT_TRUE(QTest::qWaitFor([&] { return bar->value() > bar->maximum() / 2; }));
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window->isVisible(); }));
}

TEST_F(ProgramWindows, ShowNoProgressWithoutAnEnd) {
    EXPECT_EQ(Shown()->findChild<QProgressBar*>(), nullptr);
}

} // namespace
} // namespace suite::test
