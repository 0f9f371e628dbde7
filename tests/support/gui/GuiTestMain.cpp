// The main of every test program that draws text or opens windows.
#include "support/gui/GuiEnvironment.h"

#include <QApplication>
#include <gtest/gtest.h>

// What fontconfig keeps to the end of the process is its own affair. The sanitizer asks for these
// names: NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig"; }
extern "C" const char* __lsan_default_options() { return "print_suppressions=0"; }
// NOLINTEND(bugprone-reserved-identifier)

int main(int argc, char** argv) {
    const test::GuiEnvironment environment;
    testing::InitGoogleTest(&argc, argv);
    QApplication::setStyle(QStringLiteral("fusion"));
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
