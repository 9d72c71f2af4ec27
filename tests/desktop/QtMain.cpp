#include "desktop/ContrastStyle.h"

#include <QApplication>
#include <gmock/gmock.h>

/// Tests look the same everywhere: Qt's own style, one font, no animations.
int main(int count, char** words) {
    testing::InitGoogleMock(&count, words);
    QApplication application(count, words);
    QApplication::setStyle(new desktop::ContrastStyle(QStringLiteral("Fusion")));
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
    QApplication::setEffectEnabled(Qt::UI_AnimateMenu, false);
    QApplication::setEffectEnabled(Qt::UI_FadeMenu, false);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
