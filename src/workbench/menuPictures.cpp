#include "workbench/menuPictures.h"

#include "gfx/modCtlCommon_ctl_colors.h"
#include "host/Form.h"
#include "platform/window/resources.h"
#include "workbench/menuEntries.h"

namespace {

constexpr int kCell = 240;  // twips: 16 pixels at 96 dots per inch

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

int EntryPictures::cellSize() { return Form::PixelsY(kCell); }

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
