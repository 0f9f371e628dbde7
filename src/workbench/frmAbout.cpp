#include "workbench/frmAbout.h"

#include "file/ufu_files.h"
#include "gfx/modCtlCommon_ctl_shapes.h"
#include "platform/base/codepages.h"
#include "platform/window/dialogs.h"
#include "platform/window/shell.h"
#include "workbench/InputForm.h"
#include "workbench/product.h"
#include "workbench/storedValues.h"

#include <array>
#include <cstdio>

namespace {

constexpr Color kBlack = 0, kBlue = 0xFF0000, kGray = 0x808080, kWhite = 0xFFFFFF;
constexpr std::uint32_t kAllAccess = 0x2003F;
constexpr int kNormalWindow = 1;
constexpr double kTitleSize = 18;  // points

std::string ansi(TextView s) {
    const Bytes bytes = platform::textToBytes(s, platform::GetACP());
    return {bytes.begin(), bytes.end()};
}

Text wide(std::string_view bytes) {
    return platform::bytesToText(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size(),
                                 platform::GetACP());
}

}  // namespace

frmAbout::frmAbout() : Form(platform::WindowKind::Dialog) {
    Caption(u"About " + Text(kProductName));
    ClientSize(PixelsX(5220), PixelsY(3555));
}

void frmAbout::onLoad() {
    const auto label = [this](PlainLabel& lbl, TextView sName, const Text& sCaption,
                              const RECT& place) {
        placeControl(*this, lbl, sName, place);
        lbl.Caption(sCaption);
    };
    lblTitle.Font({.Size = kTitleSize, .Bold = true});
    label(lblTitle, u"lblTitle", Text(kProductName), PlaceOfTwips(120, 240, 3885, 480));
    label(lblVersion, u"lblVersion", u"Version " + productVersion(),
          PlaceOfTwips(120, 780, 3885, 225));
    label(lblDescription, u"lblDescription",
          u"This utility permits you to translate (and maintain) .ini compliant language files, "
          u"such as the .lng and .ini files from which many programs take the texts of their "
          u"menus, dialogs and messages.",
          PlaceOfTwips(120, 1125, 3885, 1170));
    lblDescription.ForeColor(kBlack);
    label(lblCopy, u"lblCopy", u"Made by the Quillmere developers",
          PlaceOfTwips(150, 2640, 3345, 315));
    label(lblSite, u"lblSite", siteAddress(), PlaceOfTwips(150, 3090, 3345, 315));
    lblSite.ForeColor(kBlue);
    lblSite.HandPointer(true);
    lblSite.Click = [this] {
        (void)platform::ShellExecuteW(hWnd(), u"open", siteAddress(), {}, {}, kNormalWindow);
    };
    placeControl(*this, cmdOK, u"cmdOK", PlaceOfTwips(3600, 2640, 1455, 345),
                 StoredValues().text(u"Caption", u"OK"));
    placeControl(*this, cmdSysInfo, u"cmdSysInfo", PlaceOfTwips(3600, 3090, 1455, 345),
                 StoredValues().text(u"Caption", u"System Info..."));
    cmdOK.Click = [this] { (void)Unload(); };
    cmdSysInfo.Click = [this] { StartSysInfo(); };
    cmdOK.Default(true);
    cmdOK.Cancel(true);
    CenterOnScreen();
}

bool frmAbout::onFormKey(HWND, std::uint32_t uMsg, platform::WPARAM wParam,
                         platform::LPARAM lParam) {
    return isRepeatedEnter(uMsg, wParam, lParam);
}

void frmAbout::onPaint() {
    DrawRect(hDC(), {0, 0, ScaleWidth(), ScaleHeight()}, BackColor(), true);
    const auto line = [&](int left, int y, Color color) {
        DrawLine(hDC(), PixelsX(left), PixelsY(y), PixelsX(5070), PixelsY(y), color);
    };
    line(90, 2445, kGray);
    line(105, 2460, kWhite);
}

void frmAbout::StartSysInfo() {
    Text sPath;
    if (!GetKeyValue(platform::HKEY_LOCAL_MACHINE, u"SOFTWARE\\Microsoft\\Shared Tools\\MSINFO",
                     u"PATH", sPath)) {
        Text sFolder;
        if (GetKeyValue(platform::HKEY_LOCAL_MACHINE, u"SOFTWARE\\Microsoft\\Shared Tools Location",
                        u"MSINFO", sFolder) &&
            ufu_FileExist(sFolder + u"\\MSINFO32.EXE")) {
            sPath = sFolder + u"\\MSINFO32.EXE";
        }
    }
    const bool started =
        !sPath.empty() && platform::ShellExecuteW(hWnd(), u"open", sPath, {}, {}, kNormalWindow) >=
                              platform::SE_ERR_SUCCESS;
    if (started) return;
    (void)platform::MessageBoxW(hWnd(), u"System Information Is Unavailable At This Time",
                                kProductName, platform::MB_OK);
}

bool frmAbout::GetKeyValue(platform::HKEY KeyRoot, TextView KeyName, TextView SubKeyRef,
                           Text& KeyVal) {
    KeyVal.clear();
    platform::HKEY hKey = 0;
    if (platform::RegOpenKeyExA(KeyRoot, ansi(KeyName), 0, kAllAccess, hKey) !=
        platform::ERROR_SUCCESS) {
        return false;
    }
    std::array<char, 1024> value;
    auto size = static_cast<std::uint32_t>(value.size());
    std::uint32_t type = 0;
    const std::int32_t result =
        platform::RegQueryValueExA(hKey, ansi(SubKeyRef), type, value.data(), size);
    platform::RegCloseKey(hKey);
    if (result != platform::ERROR_SUCCESS) return false;

    std::string_view bytes(value.data(), size);
    if (type == platform::REG_DWORD) {
        KeyVal = u"&h";
        for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte) {
            std::array<char, 3> digits;
            (void)std::snprintf(digits.data(), digits.size(), "%02X",
                                static_cast<unsigned>(static_cast<unsigned char>(*byte)));
            KeyVal += fromUtf8(digits.data());
        }
        return true;
    }
    if (bytes.ends_with('\0')) bytes.remove_suffix(1);
    KeyVal = wide(bytes);
    return true;
}
