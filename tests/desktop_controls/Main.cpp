#include <QApplication>
#include <QStyleFactory>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>

namespace {

/// What the toolkit warns of is a mistake of ours; what it says about the machine is not.
void TakeMessage(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    const bool isOurs = type == QtWarningMsg && context.category &&
                        std::strcmp(context.category, "default") == 0 && !text.startsWith("QStandardPaths");
    if (isOurs && testing::UnitTest::GetInstance()->current_test_info()) {
        ADD_FAILURE() << text.toStdString();
    } else {
        std::fprintf(stderr, "%s\n", qPrintable(text));
    }
}

} // namespace

int main(int count, char** arguments) {
    testing::InitGoogleTest(&count, arguments);
    if (testing::GTEST_FLAG(list_tests)) return RUN_ALL_TESTS(); // needs no screen
    qInstallMessageHandler(TakeMessage);
    QApplication application(count, arguments);
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    QApplication::setFont(QFont("DejaVu Sans", 9));
    QLocale::setDefault(QLocale::c());
    return RUN_ALL_TESTS();
}
