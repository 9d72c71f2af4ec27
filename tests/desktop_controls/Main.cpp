#include <QApplication>
#include <QStyleFactory>
#include <gtest/gtest.h>

int main(int count, char** arguments) {
    testing::InitGoogleTest(&count, arguments);
    if (testing::GTEST_FLAG(list_tests)) return RUN_ALL_TESTS(); // needs no screen
    QApplication application(count, arguments);
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    QApplication::setFont(QFont("DejaVu Sans", 9));
    QLocale::setDefault(QLocale::c());
    return RUN_ALL_TESTS();
}
