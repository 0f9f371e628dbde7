// The main of every test program that draws text or opens windows.
#include "support/gui/GuiEnvironment.h"

#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    const test::GuiEnvironment environment;
    testing::InitGoogleTest(&argc, argv);
    QApplication::setStyle(QStringLiteral("fusion"));
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
