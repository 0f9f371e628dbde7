// tests/support/gui/GuiEnvironment.h: the surroundings in which windows and text come out the same
// on every machine.
#pragma once
#include <filesystem>

namespace test {

// From construction on: no display (QUILLMERE_TEST_PLATFORM names another platform of the toolkit,
// such as xcb), the fonts of the tree and no others, no scaling, plain locale, and empty folders in
// place of the user's own, which go with the object. To be made ahead of the application object.
class GuiEnvironment {
public:
    GuiEnvironment();
    ~GuiEnvironment();
    GuiEnvironment(const GuiEnvironment&) = delete;
    GuiEnvironment& operator=(const GuiEnvironment&) = delete;

private:
    std::filesystem::path m_home;
};

}  // namespace test
