#include "platform/window/dialogs.h"

#include "platform/base/paths.h"
#include "platform/base/testhooks.h"
#include "platform/window/handles.h"
#include "platform/window/testhooks.h"
#include "platform/window/window.h"
#include "support/TempDir.h"
#include "support/window/LoggedWindow.h"

#include <QApplication>
#include <QCheckBox>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFontDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace platform;
using platform::test::DialogScript;

namespace {

// Does one step after the other to the dialogs that open, as a person would. A step that finds no
// dialog of its type within five seconds ends the dialogs and fails the test.
class Person {
public:
    Person() {
        QObject::connect(&m_timer, &QTimer::timeout, [this] { look(); });
        m_timer.start(5);
    }
    ~Person() { EXPECT_TRUE(m_steps.empty()) << m_steps.size() << " steps not done"; }
    Person(const Person&) = delete;
    Person& operator=(const Person&) = delete;

    template <class Dialog> void then(std::function<void(Dialog&)> step) {
        m_steps.push_back([step]() -> std::function<void()> {
            auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr || !dialog->isVisible()) return nullptr;
            return [step, dialog] { step(*dialog); };
        });
    }

private:
    void look() {
        if (m_busy) return;
        const std::function<void()> step = m_steps.empty() ? nullptr : m_steps.front()();
        if (step) {
            m_steps.pop_front();
            m_waited = 0;
            m_busy = true;
            // Not inside the timer: a step may open the next dialog.
            QTimer::singleShot(0, [this, step] {
                m_busy = false;
                step();
            });
        } else if (++m_waited > 1000) {
            ADD_FAILURE() << (m_steps.empty() ? "a dialog stays open" : "a dialog did not open");
            m_steps.clear();
            while (QWidget* open = QApplication::activeModalWidget()) {
                if (auto* dialog = qobject_cast<QDialog*>(open)) dialog->done(0);
            }
        }
    }
    QTimer m_timer;
    std::deque<std::function<std::function<void()>()>> m_steps;
    int m_waited = 0;
    bool m_busy = false;
};

// A text with its NULs.
template <std::size_t Size> Text whole(const char16_t (&literal)[Size]) {
    return Text(literal, Size - 1);
}

Text upToNul(const Text& buffer) { return buffer.substr(0, buffer.find(u'\0')); }

class Dialogs : public testing::Test {
public:
    // A record that starts in `dir`.
    [[nodiscard]] OPENFILENAMEW record(std::uint32_t flags) const {
        return {.lpstrFilter = whole(u"Language Files\0*.lng; *.ini\0All Files (*.*)\0*.*\0"),
                .lpstrFile = Text(200, u' '),
                .nMaxFile = 201,
                .lpstrInitialDir = dir.inside(""),
                .lpstrTitle = u"Open File",
                .Flags = flags};
    }
    // The name in `dir` of what was chosen; empty when the dialog gave nothing.
    std::string open(OPENFILENAMEW& r) const {
        return GetOpenFileNameW(r) ? inDir(r.lpstrFile) : std::string();
    }
    std::string save(OPENFILENAMEW& r) const {
        return GetSaveFileNameW(r) ? inDir(r.lpstrFile) : std::string();
    }
    // The same of a folder, which is given back.
    std::string take(ITEMIDLIST item) const {
        Text path(2048, u'\0');
        const bool found = SHGetPathFromIDListW(item, path);
        CoTaskMemFree(item);
        return found ? inDir(path) : std::string();
    }
    void makeFolder(const char* name) const {
        ASSERT_EQ(::mkdir((dir.path() / name).c_str(), 0700), 0);
    }
    platform::test::HookScope baseHooks;
    platform::test::WindowHookScope hooks;
    Person person;
    ::test::TempDir dir;

private:
    [[nodiscard]] std::string inDir(const Text& buffer) const {
        const std::string path = pathToSystem(upToNul(buffer)), around = dir.path().string() + '/';
        return path.starts_with(around) ? path.substr(around.size()) : path;
    }
};

// A folder dialog that starts in the folder, which must outlive it.
BROWSEINFOW startingIn(const Text& folder) {
    BROWSEINFOW info;
    info.lParam = reinterpret_cast<LPARAM>(&folder);
    info.lpfn = [](HWND hWnd, std::uint32_t uMsg, LPARAM, LPARAM data) {
        EXPECT_EQ(uMsg, BFFM_INITIALIZED);
        SendMessageW(hWnd, BFFM_SETSELECTIONW, 1, data);
        return 0;
    };
    return info;
}

// ---- What a person does

void cancel(QDialog& dialog) { dialog.close(); }

void click(QDialog& dialog, QDialogButtonBox::StandardButton button) {
    dialog.findChild<QDialogButtonBox*>()->button(button)->click();
}

void pressEnter(QFileDialog& dialog) { QMetaObject::invokeMethod(&dialog, "accept"); }

std::function<void(QFileDialog&)> type(const char* name) {
    return [name](QFileDialog& dialog) {
        dialog.findChild<QLineEdit*>()->setText(QString::fromUtf8(name));
        pressEnter(dialog);
    };
}

// The list of names that are no text.
QListWidget& oddNames(QFileDialog& dialog) { return *dialog.findChild<QListWidget*>(); }

void takeFirstOddName(QFileDialog& dialog) {
    oddNames(dialog).setCurrentRow(0);
    pressEnter(dialog);
}

// A box whose text has that part in it.
std::function<void(QMessageBox&)> answer(const char* part, QMessageBox::StandardButton button) {
    return [part, button](QMessageBox& box) {
        EXPECT_TRUE(box.text().contains(QString::fromUtf8(part))) << box.text().toStdString();
        box.button(button)->click();
    };
}
std::function<void(QMessageBox&)> dismiss(const char* part) {
    return answer(part, QMessageBox::Ok);
}

void changeFont(QFontDialog& dialog, const std::function<void(QFont&)>& change) {
    QFont font = dialog.currentFont();
    change(font);
    dialog.setCurrentFont(font);
    click(dialog, QDialogButtonBox::Ok);
}

}  // namespace

// ---- By script

TEST_F(Dialogs, FollowAScriptThatNotesWhatWasAsked) {
    DialogScript script;
    script.answerMessageBox(IDYES);
    script.answerFile(u"\\home\\me\\a.lng", 2);
    script.answerFolder(u"\\home\\me");
    script.answerColor(rgb(1, 2, 3));
    EXPECT_EQ(MessageBoxW(0, u"Save?\r\nNow", u"Attention", 35), IDYES);
    OPENFILENAMEW r = record(0x81800);
    r.lpstrInitialDir.clear();
    EXPECT_TRUE(GetOpenFileNameW(r));
    EXPECT_EQ(r.lpstrFile.substr(0, 16), whole(u"\\home\\me\\a.lng\0 ")) << "the rest stays";
    EXPECT_EQ(r.nFilterIndex, 2U);
    const ITEMIDLIST item = SHBrowseForFolderW({0, u"Pick", 0x51, nullptr, 0});
    Text buffer(20, u'.');
    EXPECT_TRUE(SHGetPathFromIDListW(item, buffer));
    EXPECT_EQ(buffer, whole(u"\\home\\me\0..........."));
    Text small(8, u'.');
    EXPECT_FALSE(SHGetPathFromIDListW(item, small)) << "no room for the NUL";
    EXPECT_EQ(small, u"........");
    CoTaskMemFree(item);
    EXPECT_FALSE(SHGetPathFromIDListW(item, buffer));
    EXPECT_EQ(platform::test::openFolderItems(), 0);
    CHOOSECOLORA color;
    EXPECT_TRUE(ChooseColorA(color));
    EXPECT_EQ(color.rgbResult, rgb(1, 2, 3));
    EXPECT_FALSE(ChooseColorA(color)) << "no answer is left";
    EXPECT_EQ(MessageBoxW(0, u"\xD83D\xDE00\u0416?", u"", MB_YESNO), IDNO);
    EXPECT_EQ(script.log(),
              "messagebox style=0x23 title=\"Attention\" text=\"Save?\\000D\\000ANow\"\n"
              "open title=\"Open File\" filter=Language Files (*.lng *.ini)|All Files (*) index=0 "
              "flags=0x81800 dir=\"\" name=\"\" ext=\"\"\n"
              "folder title=\"Pick\" start=\"\"\n"
              "color flags=0x0\n"
              "UNANSWERED color flags=0x0\n"
              "UNANSWERED messagebox style=0x4 title=\"\" text=\"\xF0\x9F\x98\x80\xD0\x96?\"\n");
}

TEST_F(Dialogs, UnderstandFiltersOfAnyShape) {
    const struct {
        Text filter;
        std::string shown;
    } kFilters[] = {
        {u"", ""},
        {whole(u"\0*.a\0"), ""},  // an empty description is the end
        {u"Alone", "Alone (*)"},
        {whole(u"Odd\0*.a\0Count"), "Odd (*.a)|Count (*)"},
        {whole(u"No pattern\0\0Behind\0*.b\0\0"), "No pattern (*)|Behind (*.b)"},
        {whole(u"Pieces\0; *.a ;;*.b; \0"), "Pieces (*.a *.b)"},
        {whole(u"End\0*.a\0\0Behind\0*.b\0"), "End (*.a)"},
        {whole(u"Mixed (*.a; *.b)\0*.a;*.b\0"), "Mixed (*.a *.b)"},
        {whole(u"Text (old)\0*.txt\0Text (new)\0*.txt\0"), "Text (old) (*.txt)|Text (new) (*.txt)"},
        {whole(u"(*.a)\0*.a\0"), "(*.a) (*.a)"},
        {whole(u"Blanks\0my file*.a;(x).\u0436\0"), "Blanks (my?file*.a ?x?.?)"},
    };
    for (const auto& f : kFilters) {
        DialogScript script;
        OPENFILENAMEW r;
        r.lpstrFilter = f.filter;
        EXPECT_FALSE(GetOpenFileNameW(r));
        const std::string log = script.log();
        const std::size_t at = log.find("filter=") + 7;
        EXPECT_EQ(log.substr(at, log.find(" index=") - at), f.shown) << toUtf8(f.filter);
    }
}

// ---- Message box

TEST_F(Dialogs, AMessageBoxHasTheButtonsOfItsStyle) {
    const struct {
        std::uint32_t style;
        int buttons, standard, escape;  // the result of Enter and of Escape; 0: nothing happens
    } kBoxes[] = {
        {MB_OK | MB_ICONSTOP, 1, IDOK, IDOK},
        {MB_OKCANCEL, 2, IDOK, IDCANCEL},
        {MB_ABORTRETRYIGNORE | MB_DEFBUTTON3, 3, IDIGNORE, 0},
        {MB_YESNOCANCEL | MB_ICONQUESTION, 3, IDYES, IDCANCEL},
        {MB_YESNO | MB_DEFBUTTON2 | MB_TASKMODAL | MB_TOPMOST, 2, IDNO, IDNO},
        {MB_RETRYCANCEL, 2, IDRETRY, IDCANCEL},
        {0xF, 1, IDOK, IDOK},
    };
    for (const auto& b : kBoxes) {
        for (const bool enter : {true, false}) {
            person.then<QMessageBox>([&](QMessageBox& box) {
                EXPECT_EQ(box.buttons().size(), b.buttons);
                EXPECT_EQ(box.text(), QStringLiteral("<b>plain</b> & text"));
                EXPECT_EQ(box.textFormat(), Qt::PlainText);
                if (enter) {
                    box.defaultButton()->click();
                } else {
                    box.close();
                    if (b.escape == 0) {
                        EXPECT_TRUE(box.isVisible());
                        box.buttons().front()->click();
                    }
                }
            });
            const int result = MessageBoxW(0, u"<b>plain</b> & text", u"Attention", b.style);
            if (enter || b.escape != 0) {
                EXPECT_EQ(result, enter ? b.standard : b.escape) << b.style;
            }
        }
    }
}

TEST_F(Dialogs, AMessageBoxIsNotAnsweredByEnterThatIsStillHeld) {
    person.then<QMessageBox>([&](QMessageBox& box) {
        const auto enter = [&](bool held) {
            QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"),
                            held);
            QApplication::sendEvent(box.defaultButton(), &press);
        };
        enter(true);
        EXPECT_TRUE(box.isVisible());
        enter(false);
    });
    EXPECT_EQ(MessageBoxW(0, u"?", u"", MB_YESNOCANCEL), IDYES);
}

TEST_F(Dialogs, EndWhenTheirOwnerIsDestroyed) {
    using Ask = std::function<bool(HWND)>;
    const auto file = [&](HWND h) {
        OPENFILENAMEW r = record(0);
        r.hwndOwner = h;
        return GetOpenFileNameW(r);
    };
    const auto color = [](HWND h) {
        CHOOSECOLORA r{.hwndOwner = h};
        return ChooseColorA(r);
    };
    const auto font = [](HWND h) {
        CHOOSEFONTA r{.hwndOwner = h};
        return ChooseFontA(r);
    };
    const std::pair<const char*, Ask> kDialogs[] = {
        {"message", [](HWND h) { return MessageBoxW(h, u"?", u"", MB_YESNOCANCEL) != IDCANCEL; }},
        {"file", file},
        {"folder", [](HWND h) { return SHBrowseForFolderW({.hwndOwner = h}) != 0; }},
        {"colour", color},
        {"font", font},
    };
    for (const auto& [what, ask] : kDialogs) {
        ::test::MessageLog log;
        ::test::LoggedWindow owner(log, "owner", ::test::mainWindow());
        ShowWindow(owner.hWnd(), SW_SHOW);
        const HWND hWnd = owner.hWnd();
        person.then<QDialog>([hWnd](QDialog&) { DestroyWindow(hWnd); });
        EXPECT_FALSE(ask(hWnd)) << what;
        platform::test::settle();
    }
}

// ---- Files

TEST_F(Dialogs, AFileDialogGivesAFileThatIsThere) {
    dir.write("a.lng", "");
    dir.write("b.txt", "");
    OPENFILENAMEW r = record(OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST);
    person.then<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Open File"));
        EXPECT_EQ(dialog.nameFilters(), (QStringList{QStringLiteral("Language Files (*.lng *.ini)"),
                                                     QStringLiteral("All Files (*)")}));
        dialog.selectNameFilter(dialog.nameFilters().at(1));
        type("missing.lng")(dialog);
    });
    person.then<QMessageBox>(dismiss("missing.lng"));
    person.then<QFileDialog>(type("a.lng"));
    EXPECT_EQ(open(r), "a.lng");
    EXPECT_EQ(r.nFilterIndex, 2U);
    EXPECT_EQ(r.Flags & OFN_NOREADONLYRETURN, OFN_NOREADONLYRETURN);

    OPENFILENAMEW again = record(r.Flags);
    person.then<QFileDialog>(cancel);
    EXPECT_EQ(open(again), "");
    EXPECT_EQ(again.lpstrFile, record(0).lpstrFile);
    EXPECT_EQ(again.Flags, r.Flags);
}

TEST_F(Dialogs, AnOpenDialogAddsTheExtensionWhereThereIsNoSuchFile) {
    for (const char* name : {"plain", "plain.lng", "dutch.lng", "x.ini"}) dir.write(name, "");
    for (const auto& [typed, expected] : {std::pair{"plain", "plain"},
                                          {"dutch", "dutch.lng"},
                                          {"plain.lng", "plain.lng"},
                                          {"x.ini", "x.ini"}}) {
        OPENFILENAMEW r = record(OFN_FILEMUSTEXIST);
        r.lpstrDefExt = u"lng";
        person.then<QFileDialog>(type(typed));
        EXPECT_EQ(open(r), expected);
        const bool differs = std::string_view(expected).find(".lng") == std::string_view::npos;
        EXPECT_EQ((r.Flags & OFN_EXTENSIONDIFFERENT) != 0, differs) << typed;
    }
}

TEST_F(Dialogs, ASaveDialogTakesANewNameInADirectoryThatIsThere) {
    dir.write("old.lng", "");
    OPENFILENAMEW r = record(OFN_EXPLORER | OFN_PATHMUSTEXIST);
    r.lpstrFile.replace(0, 9, u"  new.lng");
    r.nFilterIndex = 2;
    r.lpstrDefExt = u"lng";
    person.then<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.findChild<QLineEdit*>()->text(), QStringLiteral("new.lng"));
        EXPECT_EQ(dialog.selectedNameFilter(), QStringLiteral("All Files (*)"));
        type("none/new.txt")(dialog);
    });
    person.then<QMessageBox>(dismiss("Folder not found"));
    person.then<QFileDialog>(type("dutch"));
    EXPECT_EQ(save(r), "dutch.lng") << "with the default extension";
    EXPECT_EQ(r.Flags & OFN_EXTENSIONDIFFERENT, 0U);

    r = record(OFN_OVERWRITEPROMPT);
    r.lpstrDefExt = u"ini";
    person.then<QFileDialog>(type("old.lng"));
    person.then<QMessageBox>(answer("", QMessageBox::Yes));
    EXPECT_EQ(save(r), "old.lng");
    EXPECT_EQ(r.Flags & OFN_EXTENSIONDIFFERENT, OFN_EXTENSIONDIFFERENT);

    r = record(0);
    r.nMaxFile = 10;
    person.then<QFileDialog>(type("x.lng"));
    person.then<QMessageBox>(dismiss("too long"));
    person.then<QFileDialog>(cancel);
    EXPECT_EQ(save(r), "");
}

TEST_F(Dialogs, ANameThatIsNoTextComesBackIntact) {
    makeFolder("d\xFF");
    for (const char* name : {"caf\xE9.lng", "caf\xC3\xA9.lng", "other\xE9.txt", "d\xFF/in.lng"}) {
        dir.write(name, "");
    }
    OPENFILENAMEW r = record(OFN_FILEMUSTEXIST);
    person.then<QFileDialog>([&](QFileDialog& dialog) {
        ASSERT_EQ(oddNames(dialog).count(), 2) << "the filter counts here as well";
        EXPECT_TRUE(oddNames(dialog).isVisible());
        oddNames(dialog).setCurrentRow(0);
        click(dialog, QDialogButtonBox::Open);
    });
    EXPECT_EQ(open(r), "caf\xE9.lng");

    person.then<QFileDialog>([&](QFileDialog& dialog) {
        QListWidget& odd = oddNames(dialog);
        emit odd.itemActivated(odd.item(1));  // into the directory
        ASSERT_EQ(odd.count(), 2) << "the way up, and what is inside";
        emit odd.itemActivated(odd.item(1));
    });
    EXPECT_EQ(open(r), "d\xFF/in.lng");

    // As a dialog of the desktop gives it back: with a stand-in for the byte.
    r = record(OFN_EXPLORER);
    person.then<QFileDialog>(type("caf\xEF\xBF\xBD.lng"));
    EXPECT_EQ(open(r), "caf\xE9.lng");
    dir.write("caf\xE8.lng", "");
    person.then<QFileDialog>(type("caf\xEF\xBF\xBD.lng"));
    person.then<QMessageBox>(dismiss("Several names look like this one"));
    person.then<QFileDialog>(type("caf\xC3\xA9.lng"));
    EXPECT_EQ(open(r), "caf\xC3\xA9.lng");
}

TEST_F(Dialogs, AsksBeforeItReplacesAFileWhoseNameIsNoText) {
    dir.write("caf\xE9.lng", "");
    OPENFILENAMEW r = record(OFN_OVERWRITEPROMPT);
    for (const auto button : {QMessageBox::No, QMessageBox::Yes}) {
        person.then<QFileDialog>(takeFirstOddName);
        person.then<QMessageBox>(answer("already exists", button));
    }
    EXPECT_EQ(save(r), "caf\xE9.lng");

    r = record(0);
    person.then<QFileDialog>(takeFirstOddName);
    EXPECT_EQ(save(r), "caf\xE9.lng") << "not asked for";

    // A wish to start with it.
    r = record(0);
    const Text wished = dir.inside("caf\xE9.lng");
    r.lpstrFile.replace(0, wished.size(), wished);
    person.then<QFileDialog>(pressEnter);
    EXPECT_EQ(save(r), "caf\xE9.lng");

    // What is typed after the choice counts.
    r = record(OFN_OVERWRITEPROMPT);
    person.then<QFileDialog>([](QFileDialog& dialog) {
        oddNames(dialog).setCurrentRow(0);
        type("other.lng")(dialog);
    });
    EXPECT_EQ(save(r), "other.lng");
}

TEST_F(Dialogs, StartsInADirectoryWhoseNameIsNoText) {
    makeFolder("d\xFF");
    dir.write("d\xFF/in.lng", "");
    OPENFILENAMEW r = record(OFN_FILEMUSTEXIST);
    r.lpstrInitialDir = dir.inside("d\xFF");
    r.nFilterIndex = 99;
    person.then<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.directory().absolutePath().toStdString(), dir.path().string());
        EXPECT_EQ(dialog.selectedNameFilter(), dialog.nameFilters().back()) << "there is no 99th";
        QListWidget& odd = oddNames(dialog);
        ASSERT_EQ(odd.count(), 2);
        emit odd.itemActivated(odd.item(1));
    });
    EXPECT_EQ(open(r), "d\xFF/in.lng");
}

// ---- Folders

TEST_F(Dialogs, AFolderDialogIsLargeEnoughAndTakesOnlyFolders) {
    const Text start = dir.inside("");
    person.then<QFileDialog>([](QFileDialog& dialog) {
        EXPECT_GE(dialog.width(), 640);
        EXPECT_GE(dialog.height(), 420);
        type("none")(dialog);
    });
    person.then<QMessageBox>(dismiss("not found"));
    // Gone while it stands in the list.
    makeFolder("d\xFF");
    person.then<QFileDialog>([&](QFileDialog& dialog) {
        QObject::connect(&dialog, &QDialog::accepted,
                         [&] { ::rmdir((dir.path() / "d\xFF").c_str()); });
        takeFirstOddName(dialog);
    });
    person.then<QMessageBox>(dismiss("Folder not found"));
    person.then<QFileDialog>(cancel);
    EXPECT_EQ(SHBrowseForFolderW(startingIn(start)), 0U);
}

TEST_F(Dialogs, AFolderWhoseNameIsNoTextComesBackIntact) {
    makeFolder("d\xFF");
    makeFolder("d\xFF/in");
    // Where the dialog starts, and what is chosen there without more.
    for (const char* start : {"d\xFF", "d\xFF/in"}) {
        const Text folder = dir.inside(start) + u'\\';
        person.then<QFileDialog>(pressEnter);
        EXPECT_EQ(take(SHBrowseForFolderW(startingIn(folder))), start);
    }
}

TEST_F(Dialogs, NothingIsLeftWhenTheCallbackOfAFolderDialogFails) {
    const int before = handleCount(HandleKind::Window);
    BROWSEINFOW info;
    info.lpfn = [](HWND, std::uint32_t, LPARAM, LPARAM) -> int { throw std::runtime_error("no"); };
    EXPECT_THROW((void)SHBrowseForFolderW(info), std::runtime_error);
    EXPECT_EQ(handleCount(HandleKind::Window), before);
}

TEST_F(Dialogs, AFolderDialogStartsWhereTheCallbackSays) {
    makeFolder("inner");
    const Text start = dir.inside("inner");
    const auto accept = [&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.directory().absolutePath().toStdString(), dir.path().string() + "/inner");
        click(dialog, QDialogButtonBox::Open);
    };
    person.then<QFileDialog>(accept);
    EXPECT_EQ(take(SHBrowseForFolderW(startingIn(start))), "inner");

    const Bytes startBytes(start.begin(), start.end());
    BROWSEINFOA narrow;
    narrow.lParam = reinterpret_cast<LPARAM>(&startBytes);
    narrow.lpfn = [](HWND hWnd, std::uint32_t, LPARAM, LPARAM data) {
        SendMessageW(hWnd, BFFM_SETSELECTIONA, 1, data);
        return 0;
    };
    person.then<QFileDialog>(accept);
    const ITEMIDLIST item = SHBrowseForFolderA(narrow);
    Bytes bytes(260, 1);
    EXPECT_TRUE(SHGetPathFromIDListA(item, bytes));
    EXPECT_EQ(Bytes(bytes.begin(), std::find(bytes.begin(), bytes.end(), 0)), startBytes);
    CoTaskMemFree(item);
    person.then<QFileDialog>(cancel);
    EXPECT_EQ(SHBrowseForFolderW({}), 0U);
    EXPECT_EQ(platform::test::openFolderItems(), 0);
}

TEST_F(Dialogs, AFolderThatTheCodePageCannotNameIsNone) {
    platform::test::setLocale("C");
    DialogScript script;
    script.answerFolder(u"\\home\\\u0416");
    const ITEMIDLIST item = SHBrowseForFolderA({});
    Bytes bytes(260, 7);
    EXPECT_FALSE(SHGetPathFromIDListA(item, bytes));
    EXPECT_EQ(bytes, Bytes(260, 7));
    CoTaskMemFree(item);
}

// ---- Colour and font

TEST_F(Dialogs, AColourDialogKeepsTheCustomColours) {
    CHOOSECOLORA r{.rgbResult = rgb(192, 227, 255), .Flags = CC_RGBINIT | CC_FULLOPEN};
    r.lpCustColors[3] = rgb(9, 8, 7) | 0x11000000;
    person.then<QColorDialog>([](QColorDialog& dialog) {
        EXPECT_EQ(dialog.currentColor(), QColor(192, 227, 255));
        EXPECT_EQ(QColorDialog::customColor(3), QColor(9, 8, 7));
        QColorDialog::setCustomColor(15, QColor(1, 1, 1));
        dialog.setCurrentColor(QColor(5, 6, 7));
        click(dialog, QDialogButtonBox::Ok);
    });
    EXPECT_TRUE(ChooseColorA(r));
    EXPECT_EQ(r.rgbResult, rgb(5, 6, 7));
    EXPECT_EQ(r.lpCustColors[15], rgb(1, 1, 1));
    EXPECT_EQ(r.lpCustColors[3], rgb(9, 8, 7) | 0x11000000) << "also what is no part of the colour";
    person.then<QColorDialog>(cancel);
    EXPECT_FALSE(ChooseColorA(r));
    EXPECT_EQ(r.rgbResult, rgb(5, 6, 7));
}

TEST_F(Dialogs, AFontDialogKeepsToItsLimits) {
    CHOOSEFONTA r{.Flags = CF_SCREENFONTS | CF_EFFECTS | CF_INITTOLOGFONTSTRUCT | CF_LIMITSIZE,
                  .rgbColors = rgb(1, 2, 3),
                  .nSizeMin = 8,
                  .nSizeMax = 20};
    r.lpLogFont.lfHeight = -16;
    r.lpLogFont.lfWeight = 700;
    r.lpLogFont.lfItalic = r.lpLogFont.lfStrikeOut = 1;
    person.then<QFontDialog>([](QFontDialog& dialog) {
        const QFont start = dialog.currentFont();
        EXPECT_EQ(start.pointSizeF(), 12);
        EXPECT_TRUE(start.bold() && start.italic() && start.strikeOut() && !start.underline());
        changeFont(dialog, [](QFont& font) {
            font.setPointSize(40);
            font.setUnderline(true);
        });
    });
    person.then<QMessageBox>(dismiss("between 8 and 20"));
    person.then<QFontDialog>(
        [](QFontDialog& dialog) { changeFont(dialog, [](QFont& font) { font.setPointSize(9); }); });
    EXPECT_TRUE(ChooseFontA(r));
    EXPECT_EQ(r.iPointSize, 90);
    EXPECT_EQ(r.lpLogFont.lfHeight, -12);
    EXPECT_EQ(r.lpLogFont.lfWeight, 700);
    EXPECT_TRUE(r.lpLogFont.lfUnderline != 0 && r.lpLogFont.lfStrikeOut != 0);
    EXPECT_EQ(r.rgbColors, rgb(1, 2, 3));
    person.then<QFontDialog>(cancel);
    EXPECT_FALSE(ChooseFontA(r));
    r.nSizeMin = 21;
    EXPECT_FALSE(ChooseFontA(r)) << "no size keeps to that";
}

TEST_F(Dialogs, AFontRecordHoldsANameOf31BytesOfTheCodePage) {
    platform::test::setLocale("C");
    LOGFONTA font;
    for (const Text& name : {Text(31, u'y'), Text(u"Ch\u00E2teau"), Text()}) {
        EXPECT_TRUE(setFaceName(font, name));
        EXPECT_EQ(faceNameOf(font), name);
    }
    EXPECT_TRUE(setFaceName(font, u"Tahoma"));
    for (const Text& name : {Text(32, u'y'), Text(u"\u0416"), Text(u"a\0b", 3)}) {
        EXPECT_FALSE(setFaceName(font, name));
        EXPECT_EQ(faceNameOf(font), u"Tahoma");
    }
}

TEST_F(Dialogs, AFontDialogShowsTheFaceThatIsDrawnAndGivesBackTheNameThatWasGiven) {
    const struct {
        TextView name;
        const char *shown, *other;
    } kFaces[] = {
        {u"MS Sans Serif", "Quillmere Sans", "Noto Sans Hebrew"},
        {u"tahoma", "Quillmere Sans", "Noto Sans Hebrew"},
        {u"No Such Face", "Quillmere Sans", "Noto Sans Hebrew"},
        {u"", "Quillmere Sans", "Noto Sans Hebrew"},
        {u"NOTO Sans Thai", "Noto Sans Thai", "Quillmere Sans"},
    };
    for (const auto& k : kFaces) {
        CHOOSEFONTA r{.Flags = CF_SCREENFONTS | CF_INITTOLOGFONTSTRUCT};
        r.lpLogFont.lfHeight = -11;
        r.lpLogFont.lfWeight = 600;
        r.lpLogFont.lfUnderline = 1;
        ASSERT_TRUE(setFaceName(r.lpLogFont, k.name));
        person.then<QFontDialog>([&](QFontDialog& dialog) {
            EXPECT_EQ(dialog.currentFont().family().toStdString(), k.shown);
            EXPECT_EQ(dialog.findChild<QLineEdit*>()->text().toStdString(), k.shown);
            for (const auto* effect : dialog.findChildren<QCheckBox*>()) {
                EXPECT_FALSE(effect->isVisible()) << "without effects";
            }
            click(dialog, QDialogButtonBox::Ok);
        });
        EXPECT_TRUE(ChooseFontA(r));
        EXPECT_EQ(faceNameOf(r.lpLogFont), k.name);
        EXPECT_EQ(r.lpLogFont.lfHeight, -11);
        EXPECT_EQ(r.lpLogFont.lfWeight, 600);
        EXPECT_EQ(r.lpLogFont.lfUnderline, 1);
        EXPECT_EQ(r.iPointSize, 83);

        person.then<QFontDialog>([&](QFontDialog& dialog) {
            changeFont(dialog, [&](QFont& font) { font.setFamily(QString::fromUtf8(k.other)); });
        });
        EXPECT_TRUE(ChooseFontA(r));
        EXPECT_EQ(toUtf8(faceNameOf(r.lpLogFont)), k.other);
        EXPECT_EQ(r.lpLogFont.lfHeight, -11);
    }
}
