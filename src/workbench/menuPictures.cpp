#include "workbench/menuPictures.h"

#include "gfx/modCtlCommon_ctl_colors.h"
#include "platform/window/resources.h"
#include "workbench/menuEntries.h"

namespace {

constexpr int kCell = 16;  // at 96 dots per inch

int dotsPerInch() {
    const HDC screen = platform::GetDC(0);
    const int dots = platform::GetDeviceCaps(screen, platform::LOGPIXELSY);
    platform::ReleaseDC(0, screen);
    return dots;
}

// The first of these entries whose caption it is gives the picture.
constexpr struct {
    MenuEntry entry;
    TextView picture;
} kPictures[] = {
    {mnuShowHelp, u"help"},     {mnuHelp, u"help"},
    {mnuAbout, u"about"},       {mnuTools, u"settings"},
    {mnuExit, u"exit"},         {mnuCreateNewTranslationEmpty, u"new"},
    {mnuOpenMainFile, u"open"}, {mnuOpenTranslatedFile, u"open"},
    {mnuFile, u"file"},
};

}  // namespace

int EntryPictures::cellSize() { return platform::MulDiv(kCell, dotsPerInch(), 96); }

Picture EntryPictures::of(TextView sCaption, Color iBackground) {
    for (const auto& known : kPictures) {
        if (captionOf(known.entry) != sCaption) continue;
        const Color background = TranslateColor(iBackground);
        Picture& picture = m_pictures[{Text(known.picture), background}];
        if (picture == nullptr) {
            const int cell = cellSize();
            const TextView size = cell < 24 ? u"-16" : cell < 32 ? u"-24" : u"-32";
            picture =
                platform::loadPicture(u"menu/" + Text(known.picture) + Text(size), background);
        }
        return picture;
    }
    return nullptr;
}
