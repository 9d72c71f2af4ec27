#include "tests/desktop_controls/Support.h"

#include <gmock/gmock.h>

namespace desktop::test {

namespace {

using testing::HasSubstr;

class UpdatesTest : public testing::Test {
protected:
    void Open(const std::string& updates, const std::string& fresh) {
        peer.replies["ShowUpdates0"] = updates;
        peer.replies["ShowUpdates-1"] = fresh;
        peer.texts[13] = "m/d/yyyy";
        control = MakeControl("KvTMU110.ctlToolsUpdate", peer.Services());
        panel.reset(control->Widget());
        ShowInFront(*panel);
    }
    template <class T> T& Part(const QString& name) { return Child<T>(*panel, name); }
    QString Cell(const QString& table, int row, int column) {
        const QAbstractItemModel& model = *Part<QTreeView>(table).model();
        return model.index(row, column).data().toString();
    }

    Peer peer;
    std::shared_ptr<ControlObject> control;
    std::unique_ptr<QWidget> panel;
};

constexpr const char* oneUpdate =
    "<Updates ShowNew=\"0\"><Tool Name=\"Layout\" VREX=\"Tobr43\" version=\"4.3\" installed=\"4.2.1\" "
    "LastUpdated=\"2024-09-02\">Faster &lt;b&gt;plots&lt;/b&gt;</Tool></Updates>";
constexpr const char* twoNew =
    "<Updates ShowNew=\"-1\"><Tool Name=\"Quantities\" version=\"1\" LastUpdated=\"2024-09-02\"/>"
    "<Tool Name=\"Schedules\" version=\"2\" LastUpdated=\"2024-09-02\"/></Updates>";
constexpr const char* noneNew = "<Updates ShowNew=\"-1\"/>";

} // namespace

TEST_F(UpdatesTest, ShowsWhatTheUpdatesComponentOffers) {
    Open(oneUpdate, noneNew);
    ASSERT_EQ(peer.Of("ShowUpdates").size(), 2U);
    EXPECT_EQ(peer.Of("ShowUpdates")[0].destination, "Qillo110");
    EXPECT_EQ(Cell("updates", 0, 0), "Layout");
    EXPECT_EQ(Cell("updates", 0, 1), "4.2.1");
    EXPECT_EQ(Cell("updates", 0, 2), "4.3");
    EXPECT_EQ(Cell("updates", 0, 3), "9/2/2024");
    EXPECT_EQ(Cell("updates", 0, 4), "Faster <b>plots</b>");
    EXPECT_EQ(Part<QTabWidget>("offers").tabText(0), "&Updates (1)");
    EXPECT_EQ(Unnamed(*panel), QStringList());
    TakePictures(*panel, "updates");
    Part<QTabWidget>("offers").setCurrentIndex(1);
    EXPECT_EQ(Part<QLabel>("newMessage").text(), "There are no new programs.");
    EXPECT_EQ(Unnamed(*panel), QStringList());
    TakePictures(*panel, "updates-none");
}

TEST_F(UpdatesTest, ShowsEveryDateThatTheListShows) {
    for (const auto& [given, shown] :
         std::vector<std::pair<const char*, const char*>>{{"20240902T0930Z", "9/2/2024"},
                                                          {"2-Sep-2024", "9/2/2024"},
                                                          {"2024", "1/1/2024"},
                                                          {"soon", "soon"}}) {
        Open(QString(oneUpdate).replace("2024-09-02", given).toStdString(), noneNew);
        EXPECT_EQ(Cell("updates", 0, 3), shown);
    }
}

TEST_F(UpdatesTest, LooksAgainThroughTheComponent) {
    Open("", "");
    ASSERT_TRUE(
        WaitUntil([this] { return Part<QLabel>("updatesMessage").text().contains("has not answered"); }));
    peer.doings["SaveToolProperties"] = [this] {
        peer.replies["ShowUpdates0"] = oneUpdate;
        peer.replies["ShowUpdates-1"] = noneNew;
    };
    QTest::keyClick(&Part<QPushButton>("again"), Qt::Key_Space);
    EXPECT_EQ(Cell("updates", 0, 0), "Layout");
    EXPECT_FALSE(Part<QLabel>("updatesMessage").isVisible());
}

TEST_F(UpdatesTest, WhatIsOnlyNotLoadedYetIsLoadedBeforeAnythingIsTold) {
    peer.doings["SaveToolProperties"] = [this] {
        peer.replies["ShowUpdates0"] = oneUpdate;
        peer.replies["ShowUpdates-1"] = noneNew;
    };
    control = MakeControl("KvTMU110.ctlToolsUpdate", peer.Services());
    panel.reset(control->Widget());
    panel->show();
    control->Refresh(); // programs come and go meanwhile
    EXPECT_THAT(peer.Of("SaveToolProperties"), testing::IsEmpty()) << "not from inside the drawing";
    EXPECT_EQ(Part<QLabel>("updatesMessage").text(), "The updates component is being asked.");
    EXPECT_EQ(Part<QTabWidget>("offers").tabText(0), "Updates");
    ASSERT_TRUE(WaitUntil([this] { return Part<QTreeView>("updates").model()->rowCount() == 1; }));
    EXPECT_EQ(peer.Of("SaveToolProperties").size(), 1U);
    EXPECT_EQ(Part<QTabWidget>("offers").tabText(0), "&Updates (1)");
    EXPECT_EQ(Part<QLabel>("newMessage").text(), "There are no new programs.");
}

TEST_F(UpdatesTest, WhoDoesNotAnswerIsAskedForOnce) {
    Open("", "");
    ASSERT_TRUE(
        WaitUntil([this] { return Part<QLabel>("updatesMessage").text().contains("has not answered"); }));
    EXPECT_EQ(Part<QTabWidget>("offers").tabText(0), "&Updates (0)");
    control->Refresh();
    panel->hide();
    panel->show();
    QTest::qWait(20);
    EXPECT_EQ(peer.Of("SaveToolProperties").size(), 1U);
}

TEST_F(UpdatesTest, AnAnswerThatComesLaterIsShown) {
    Open("", "");
    ASSERT_TRUE(
        WaitUntil([this] { return Part<QLabel>("updatesMessage").text().contains("has not answered"); }));
    EXPECT_TRUE(control->TakeOffer(oneUpdate));
    EXPECT_EQ(Cell("updates", 0, 0), "Layout");
    EXPECT_FALSE(Part<QLabel>("updatesMessage").isVisible());
}

TEST_F(UpdatesTest, LookingAgainKeepsThePageInFront) {
    Open(oneUpdate, twoNew);
    auto& pages = Part<QTabWidget>("offers");
    pages.setCurrentIndex(1);
    bool taken = false;
    peer.doings["SaveToolProperties"] = [&] { // the desktop gives out from its loop what others were answered
        QTimer::singleShot(0, panel.get(), [&] { taken = control->TakeOffer(oneUpdate); });
    };
    Click(Part<QPushButton>("again"));
    ASSERT_TRUE(WaitUntil([&] { return taken; }));
    EXPECT_EQ(pages.currentIndex(), 1);
    QTest::qWait(20);
    EXPECT_TRUE(control->TakeOffer(oneUpdate));
    EXPECT_EQ(pages.currentIndex(), 0) << "what somebody else asked for comes in front";
}

TEST_F(UpdatesTest, TheSameAnswerLeavesRowAndColumnsAsTheyAre) {
    Open(oneUpdate, twoNew);
    Part<QTabWidget>("offers").setCurrentIndex(1);
    auto& table = Part<QTreeView>("new");
    table.setCurrentIndex(table.model()->index(1, 0));
    table.setColumnWidth(0, 222);
    control->Refresh();
    EXPECT_EQ(table.currentIndex().row(), 1);
    EXPECT_EQ(table.columnWidth(0), 222);
    peer.replies["ShowUpdates-1"] =
        "<Updates ShowNew=\"-1\"><Tool Name=\"Sections\" version=\"1\"/></Updates>";
    control->Refresh();
    EXPECT_EQ(Cell("new", 0, 0), "Sections");
    EXPECT_EQ(table.currentIndex().row(), 0);
}

TEST_F(UpdatesTest, AnotherLanguageIsShownInTheSameRows) {
    Open(oneUpdate, noneNew);
    peer.texts[13] = "d.m.yyyy";
    control->Retranslate();
    control->Refresh();
    EXPECT_EQ(Cell("updates", 0, 3), "2.9.2024");
}

TEST_F(UpdatesTest, AnAnswerThatCannotBeReadIsTold) {
    Open("<Updates><", noneNew);
    EXPECT_THAT(Part<QLabel>("updatesMessage").text().toStdString(), HasSubstr("cannot be read"));
    EXPECT_EQ(Part<QTabWidget>("offers").tabText(0), "&Updates (0)");
}

TEST_F(UpdatesTest, ClosesItsWindowByItsRequest) {
    Open(oneUpdate, noneNew);
    QTest::keyClick(panel.get(), Qt::Key_Escape);
    EXPECT_EQ(peer.Of("UnloadUpdateView").size(), 1U);
}

TEST_F(UpdatesTest, AsAPageOfTheMainWindowItHasNothingToClose) {
    peer.replies["ShowUpdates0"] = oneUpdate;
    control = MakeControl("KvTMU110.ctlToolsUpdate", peer.Services());
    QMainWindow window;
    window.setCentralWidget(control->Widget());
    ShowInFront(window);
    EXPECT_FALSE(Child<QPushButton>(window, "close").isVisible());
}

TEST_F(UpdatesTest, ThePanelMayGoWhileItAsks) {
    Open(oneUpdate, noneNew);
    peer.doings["ShowUpdates-1"] = [this] { panel.reset(); };
    control->Refresh();
    EXPECT_FALSE(panel);
}

} // namespace desktop::test
