#include "tests/desktop/DesktopFixture.h"

#include <QLineEdit>
#include <QListView>
#include <QTreeView>

namespace desktop {
namespace {

QPalette DarkPalette() {
    QPalette dark(QColor(0x2b, 0x2d, 0x30));
    dark.setColor(QPalette::Base, QColor(0x1e, 0x1f, 0x22));
    dark.setColor(QPalette::AlternateBase, QColor(0x26, 0x28, 0x2b));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        dark.setColor(role, QColor(0xdf, 0xe1, 0xe5));
    dark.setColor(QPalette::ToolTipBase, QColor(0x39, 0x3b, 0x40));
    dark.setColor(QPalette::ToolTipText, QColor(0xdf, 0xe1, 0xe5));
    dark.setColor(QPalette::PlaceholderText, QColor(0x8c, 0x90, 0x99));
    dark.setColor(QPalette::Highlight, QColor(0x35, 0x74, 0xf0));
    dark.setColor(QPalette::HighlightedText, Qt::white);
    dark.setColor(QPalette::Link, QColor(0x6b, 0x9b, 0xfa));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        dark.setColor(QPalette::Disabled, role, QColor(0x6f, 0x73, 0x7a));
    return dark;
}

/// White on black, yellow where the user is.
QPalette ContrastPalette() {
    QPalette contrast(Qt::black);
    for (int role = 0; role < QPalette::NColorRoles; ++role)
        contrast.setColor(static_cast<QPalette::ColorRole>(role), Qt::black);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::BrightText,
          QPalette::ToolTipText, QPalette::PlaceholderText, QPalette::Light, QPalette::Midlight,
          QPalette::Mid, QPalette::Dark, QPalette::Shadow})
        contrast.setColor(role, Qt::white);
    contrast.setColor(QPalette::Highlight, Qt::yellow);
    contrast.setColor(QPalette::HighlightedText, Qt::black);
    contrast.setColor(QPalette::Link, Qt::cyan);
    contrast.setColor(QPalette::LinkVisited, Qt::cyan);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        contrast.setColor(QPalette::Disabled, role, Qt::green);
    return contrast;
}

enum class Colours { Light, Dark, Contrast };
constexpr const char* suffixes[] = {"", "-dark", "-contrast"};

/// How much of a picture has the colour that is most frequent in it.
double Emptiness(const QImage& picture) {
    QHash<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            ++counts[picture.pixel(x, y)];
    const int most = *std::max_element(counts.begin(), counts.end());
    return static_cast<double>(most) / (picture.width() * picture.height());
}

/// The main states of the window, in all palettes. Kept as pictures when ARVON_PICTURES names a folder.
class PicturesTest : public DesktopTest, public testing::WithParamInterface<Colours> {
protected:
    PicturesTest() : usual_(QApplication::palette()) {
        if (GetParam() == Colours::Dark) QApplication::setPalette(DarkPalette());
        if (GetParam() == Colours::Contrast) QApplication::setPalette(ContrastPalette());
    }
    ~PicturesTest() override {
        Close();
        QApplication::setPalette(usual_);
    }
    void Take(QWidget& widget, const char* name) {
        QApplication::processEvents();
        EXPECT_LT(Emptiness(widget.grab().toImage()), 0.97) << name << " shows next to nothing";
        TakePicture(widget, QLatin1String(name) + QLatin1String(suffixes[static_cast<int>(GetParam())]));
    }
    void ShowSuite() {
        Open();
        window->resize(1040, 600);
        OpenRow(QStringLiteral("Plot Queue"));
        ClickRow(QStringLiteral("Layout"));
        List().setFocus();
    }

private:
    QPalette usual_;
};

TEST_P(PicturesTest, MainWindow) {
    ShowSuite();
    Take(*window, "main");
}

TEST_P(PicturesTest, GermanWindow) {
    ShowSuite();
    ActionOf("language1031")->trigger();
    Settle();
    Take(*window, "german");
    Press(QKeySequence(Qt::CTRL | Qt::Key_Comma));
    ASSERT_TRUE(WaitUntil([this] { return window->Windows().Window(QStringLiteral("ocxToolOptions")); }));
    Take(*window->Windows().Window(QStringLiteral("ocxToolOptions")), "german-options");
}

TEST_P(PicturesTest, Properties) {
    Open();
    window->resize(1040, 600);
    Tree().setFocus();
    Tree().setCurrentIndex(NodeOf(QStringLiteral("Remote Assistance")));
    Settle();
    Take(*window, "properties");
}

TEST_P(PicturesTest, Options) {
    Open();
    Press(QKeySequence(Qt::CTRL | Qt::Key_Comma));
    ASSERT_TRUE(WaitUntil([this] { return window->Windows().Window(QStringLiteral("ocxToolOptions")); }));
    Take(*window->Windows().Window(QStringLiteral("ocxToolOptions")), "options");
}

TEST_P(PicturesTest, Trace) {
    ShowSuite();
    window->resize(1040, 760);
    Press(QKeySequence(Qt::Key_F12));
    Press(QKeySequence(Qt::CTRL | Qt::Key_U)); // asks other tools
    ASSERT_TRUE(WaitUntil([this] { return Find<QDialog>("updatesWindow")->isVisible(); }));
    Find<QTreeView>("messages")->expandAll();
    Take(*window, "trace");
}

TEST_P(PicturesTest, Finder) {
    Open();
    window->resize(1040, 600);
    ClickRow(QStringLiteral("Layout"));
    Press(QKeySequence(Qt::CTRL | Qt::Key_K));
    QTest::keyClicks(Find<QLineEdit>("finderText"), QStringLiteral("la"));
    Take(*Find<QDialog>("finder"), "finder");
}

TEST_P(PicturesTest, Updates) {
    Open();
    Press(QKeySequence(Qt::CTRL | Qt::Key_U));
    auto* updates = Find<QDialog>("updatesWindow");
    ASSERT_TRUE(WaitUntil([&] { return updates->isVisible(); }));
    Take(*updates, "updates");
    Take(*window, "banner");
}

TEST_P(PicturesTest, Message) {
    Open();
    OpenRow(QStringLiteral("Beam & Frame"));
    beforeAnswer = [this](QWidget& box) { Take(box, "message"); };
    OpenRow(QStringLiteral("Wärmebedarf"));
    ASSERT_TRUE(WaitUntil([this] { return !boxes.empty(); }));
    Settle();
}

TEST_P(PicturesTest, EmptyFilter) {
    Open();
    window->resize(1040, 600);
    Press(QKeySequence::Find);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("zzz"));
    Take(*window, "nothing-found");
}

std::string NameOf(const testing::TestParamInfo<Colours>& colours) {
    constexpr const char* names[] = {"Light", "Dark", "Contrast"};
    return names[static_cast<int>(colours.param)];
}
INSTANTIATE_TEST_SUITE_P(Palettes, PicturesTest,
                         testing::Values(Colours::Light, Colours::Dark, Colours::Contrast), NameOf);

} // namespace
} // namespace desktop
