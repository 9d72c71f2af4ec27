#include "tests/desktop/DesktopFixture.h"

#include "desktop/ContrastStyle.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAccessible>
#include <QComboBox>
#include <QLineEdit>
#include <QTextEdit>

namespace desktop {
namespace {

bool TakesInput(const QWidget& widget) {
    return qobject_cast<const QAbstractButton*>(&widget) || qobject_cast<const QAbstractItemView*>(&widget) ||
           qobject_cast<const QLineEdit*>(&widget) || qobject_cast<const QComboBox*>(&widget) ||
           qobject_cast<const QTextEdit*>(&widget) || widget.focusPolicy() != Qt::NoFocus;
}

/// Parts of Qt's own widgets, which Qt names or leaves out itself.
bool IsInside(const QWidget& widget) {
    const QString name = widget.objectName();
    return name.startsWith(QLatin1String("qt_")) || qobject_cast<const QAbstractSlider*>(&widget) ||
           widget.inherits("QLineEditIconButton") || widget.inherits("QTabBar") ||
           widget.inherits("QHeaderView") || widget.inherits("QToolBarExtension") ||
           widget.inherits("QTabWidget") || widget.inherits("QComboBoxPrivateContainer") ||
           widget.inherits("QComboBoxListView") || widget.inherits("QTableCornerButton");
}

class AccessibilityTest : public DesktopTest {
protected:
    QStringList Unnamed(const QWidget& top) {
        QStringList unnamed;
        QList<QWidget*> widgets = top.findChildren<QWidget*>();
        for (QWidget* widget : widgets) {
            if (!widget->isVisibleTo(&top) || !TakesInput(*widget) || IsInside(*widget)) continue;
            QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(widget);
            if (!interface || interface->text(QAccessible::Name).trimmed().isEmpty())
                unnamed.append(QStringLiteral("%1 \"%2\" in %3")
                                   .arg(QLatin1String(widget->metaObject()->className()),
                                        widget->objectName(), widget->parentWidget()->objectName()));
        }
        return unnamed;
    }
    void ExpectAllNamed(const QWidget& top) {
        EXPECT_THAT(top.findChildren<QWidget*>(), testing::Not(testing::IsEmpty()));
        EXPECT_EQ(Unnamed(top).join(u'\n').toStdString(), "");
    }
};

TEST_F(AccessibilityTest, EveryControlOfTheMainWindowHasAName) {
    Open();
    ClickRow(QStringLiteral("Layout"));
    Press(QKeySequence(Qt::Key_F12));
    ExpectAllNamed(*window);
}

TEST_F(AccessibilityTest, EveryControlOfTheOtherWindowsHasAName) {
    Open();
    Press(QKeySequence(Qt::CTRL | Qt::Key_K));
    ExpectAllNamed(*Find<QDialog>("finder"));
    QTest::keyClick(Find<QDialog>("finder"), Qt::Key_Escape);
    Press(QKeySequence(Qt::CTRL | Qt::Key_U));
    ASSERT_TRUE(WaitUntil([this] { return Find<QDialog>("updatesWindow")->isVisible(); }));
    ExpectAllNamed(*Find<QDialog>("updatesWindow"));
    Find<QDialog>("updatesWindow")->close();
    Press(QKeySequence(Qt::CTRL | Qt::Key_Comma));
    ASSERT_TRUE(WaitUntil([this] { return window->Windows().Window(QStringLiteral("ocxToolOptions")); }));
    ExpectAllNamed(*window->Windows().Window(QStringLiteral("ocxToolOptions")));
}

TEST_F(AccessibilityTest, EveryControlOfAPropertiesPageHasAName) {
    Open();
    Tree().setCurrentIndex(NodeOf(QStringLiteral("Remote Assistance")));
    Settle();
    ExpectAllNamed(*window);
}

TEST_F(AccessibilityTest, TheWalkFindsAControlWithoutAName) {
    Open();
    auto* nameless = new QLineEdit(window->centralWidget());
    nameless->show();
    EXPECT_EQ(Unnamed(*window).size(), 1);
}

TEST_F(AccessibilityTest, EveryMenuItemSaysWhatItDoes) {
    Open();
    int items = 0;
    for (const QMenu* menu : window->findChildren<QMenu*>()) {
        if (menu->parent()->inherits("QLineEdit")) continue;
        for (const QAction* action : menu->actions()) {
            if (action->isSeparator()) continue;
            ++items;
            EXPECT_FALSE(action->text().isEmpty()) << action->objectName().toStdString();
            if (menu->objectName() == QLatin1String("mnuLanguage")) continue;
            EXPECT_FALSE(action->statusTip().isEmpty() && action->menu() == nullptr)
                << action->text().toStdString();
        }
    }
    EXPECT_GT(items, 25);
}

TEST_F(AccessibilityTest, NoShortcutIsGivenTwice) {
    Open();
    QMap<QString, QString> given;
    for (const QAction* action : window->findChildren<QAction*>()) {
        const QString keys = action->shortcut().toString();
        if (keys.isEmpty() || action->parent()->inherits("QLineEdit")) continue;
        EXPECT_FALSE(given.contains(keys)) << keys.toStdString() << ": " << action->text().toStdString()
                                           << " and " << given.value(keys).toStdString();
        given.insert(keys, action->text());
    }
    EXPECT_GT(given.size(), 10);
}

TEST_F(AccessibilityTest, TheTabKeyGoesThroughEveryPartAndComesBack) {
    Open();
    ClickRow(QStringLiteral("Layout"));
    List().setFocus();
    QStringList visited;
    for (int steps = 0; steps < 80; ++steps) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QWidget* focus = QApplication::focusWidget();
        ASSERT_NE(focus, nullptr);
        visited.append(focus->objectName());
        if (focus == &List()) break;
    }
    EXPECT_EQ(visited.last(), QStringLiteral("lvTools")) << visited.join(u' ').toStdString();
    for (const char* part : {"tree", "filter", "tskLaunchTool", "tskRemoveTool", "tskEditTool", "tskShowAll"})
        EXPECT_TRUE(visited.contains(QLatin1String(part)))
            << part << " in " << visited.join(u' ').toStdString();
    EXPECT_EQ(visited.indexOf(QLatin1String("tskRemoveTool")),
              visited.indexOf(QLatin1String("tskLaunchTool")) + 1);
}

QPalette PaletteOf(const QColor& ground, const QColor& text) {
    QPalette palette;
    for (int role = 0; role < QPalette::NColorRoles; ++role)
        palette.setColor(static_cast<QPalette::ColorRole>(role), ground);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, text);
    return palette;
}

TEST(ContrastStyle, KnowsHighContrast) {
    EXPECT_TRUE(ContrastStyle::IsHighContrast(PaletteOf(Qt::black, Qt::white)));
    EXPECT_TRUE(ContrastStyle::IsHighContrast(PaletteOf(Qt::white, Qt::black)));
    EXPECT_FALSE(ContrastStyle::IsHighContrast(PaletteOf(QColor(0xef, 0xef, 0xef), Qt::black)));
    EXPECT_FALSE(ContrastStyle::IsHighContrast(PaletteOf(QColor(0x2b, 0x2d, 0x30), Qt::white)));
}

TEST(ContrastStyle, OutlinesWhatWouldBeBlackOnBlack) {
    const QPalette palette = PaletteOf(Qt::black, Qt::white);
    QCheckBox box;
    QRadioButton radio;
    QPushButton button;
    QLineEdit line;
    QComboBox choice;
    for (QWidget* widget :
         {static_cast<QWidget*>(&box), static_cast<QWidget*>(&radio), static_cast<QWidget*>(&button),
          static_cast<QWidget*>(&line), static_cast<QWidget*>(&choice)}) {
        widget->setPalette(palette);
        widget->resize(80, 30);
        const QImage picture = widget->grab().toImage();
        int bright = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                bright += qGray(picture.pixel(x, y)) > 200;
        EXPECT_GT(bright, 10) << widget->metaObject()->className();
    }
}

} // namespace
} // namespace desktop
