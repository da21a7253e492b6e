#include <gtest/gtest.h>

#include <QApplication>
#include <QStyleFactory>

// Forms are tested on a screen that isn't there, in the one style that every machine has.
int main(int count, char** words) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&count, words);
    const QApplication application(count, words);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
