#include "support/gui/GuiEnvironment.h"

#include <cstdlib>
#include <stdexcept>
#include <string>

namespace test {
namespace {

namespace fs = std::filesystem;

void setVariable(const char* name, const std::string& value) { setenv(name, value.c_str(), 1); }

}  // namespace

GuiEnvironment::GuiEnvironment() {
    const fs::path cache = fs::path(QUILLMERE_BUILD_DIR) / "test-cache";
    fs::create_directories(cache);
    std::string home = (fs::temp_directory_path() / "quillmere-home-XXXXXX").string();
    if (mkdtemp(home.data()) == nullptr) throw std::runtime_error("no temporary directory");
    m_home = home;

    setVariable("HOME", home);
    setVariable("XDG_CONFIG_HOME", home + "/config");
    setVariable("XDG_DATA_HOME", home + "/data");
    setVariable("XDG_RUNTIME_DIR", home);
    setVariable("XDG_CACHE_HOME", cache.string());  // holds what is known of the fonts
    setVariable("FONTCONFIG_FILE", QUILLMERE_SOURCE_DIR "/tests/support/gui/fonts.conf");

    const char* platform = std::getenv("QUILLMERE_TEST_PLATFORM");
    setVariable("QT_QPA_PLATFORM", platform != nullptr ? platform : "offscreen");
    setVariable("LC_ALL", "C.UTF-8");
    for (const char* name :
         {"FONTCONFIG_PATH", "LANGUAGE", "QT_AUTO_SCREEN_SCALE_FACTOR", "QT_ENABLE_HIGHDPI_SCALING",
          "QT_FONT_DPI", "QT_IM_MODULE", "QT_QPA_PLATFORMTHEME", "QT_SCALE_FACTOR",
          "QT_SCREEN_SCALE_FACTORS", "QT_STYLE_OVERRIDE", "QT_USE_PHYSICAL_DPI"}) {
        unsetenv(name);
    }
}

GuiEnvironment::~GuiEnvironment() {
    std::error_code ignored;
    fs::remove_all(m_home, ignored);
}

}  // namespace test
