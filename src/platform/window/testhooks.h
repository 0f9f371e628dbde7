// platform/window/testhooks.h: what a test sets in place of the desktop's answers. For tests only.
#pragma once
#include "platform/window/dialogs.h"
#include "platform/window/dragdrop.h"
#include "platform/window/messages.h"
#include "platform/window/shell.h"

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace platform::test {

// Undoes every hook of this header when it is made and when it goes. The first line of a test that
// sets any.
class WindowHookScope {
public:
    WindowHookScope();
    ~WindowHookScope();
    WindowHookScope(const WindowHookScope&) = delete;
    WindowHookScope& operator=(const WindowHookScope&) = delete;
};

// Reads messages until nothing is left to do: events, posted messages, paints, widgets that wait
// for their end. Timers that are due fire.
void settle();

// ---- Windows

void setWindowProcess(HWND hWnd, std::uint32_t processId);  // GetWindowThreadProcessId
// The window that the mouse would be over at a client position of another one around it.
[[nodiscard]] HWND windowAt(HWND hWnd, POINT at);
void lockProcedure(HWND hWnd, bool locked);  // SetWindowLongW(GWL_WNDPROC) fails

// ---- Keyboard and mouse

// The keys that are down for GetAsyncKeyState, by code; nullopt asks the desktop again. With
// afterCalls they go down only after so many questions, for jobs that look at the keys while they
// run.
void setKeysDown(std::optional<std::vector<std::int32_t>> keys, int afterCalls = 0);
void setCursorPos(std::optional<POINT> position);

// Input as the desktop would send it, to a window and through its whole chain. Positions are
// client pixels; keys are key codes with the text that they type; modifiers MK_SHIFT, MK_CONTROL
// and kAlt.
constexpr WPARAM kAlt = 0x20;
void pressKey(HWND hWnd, std::int32_t key, TextView typed = {}, WPARAM modifiers = 0);
void releaseKey(HWND hWnd, std::int32_t key, WPARAM modifiers = 0);
// What a server of windows sends again and again for a key that is held: a release and a press of
// one moment.
void holdKey(HWND hWnd, std::int32_t key, TextView typed = {});
void typeText(HWND hWnd, TextView text);  // a press and a release for each unit
enum class MouseAction : std::uint8_t { Press, Release, DoubleClick, Move };
// button is MK_LBUTTON, MK_RBUTTON, MK_MBUTTON, or for a move 0; down are the buttons that are down
// afterwards, and the modifiers.
void mouse(HWND hWnd, MouseAction action, POINT at, WPARAM button, WPARAM down = 0);
void wheel(HWND hWnd, POINT at, int delta, WPARAM modifiers = 0);
// What an input method says to an edit window: the text that is being composed, and the text that
// has come of it, which replaces so many units from replaceFrom, counted from the caret.
void compose(HWND hWnd, TextView composed, TextView result = {}, int replaceFrom = 0,
             int replaceLength = 0);

void setClipboardText(TextView text);
[[nodiscard]] Text clipboardText();
void failEditWindows(bool fails);  // CreateWindowExW gives 0
// Chooses the item of that caption, without its ampersand, in the menu that is open, and closes it.
// Without a caption only closes it. The captions of what could be chosen, each with a blank behind;
// empty when no menu is open.
std::string chooseFromMenu(const std::string& caption = {});

// What the desktop shows of a window and all in it: rows from the top, each pixel 0x00RRGGBB.
struct ShownPicture {
    int width = 0, height = 0;
    std::vector<std::uint32_t> pixels;
};
[[nodiscard]] ShownPicture shownPicture(HWND hWnd);

// ---- Dragging (dragdrop.h)

// What is dragged enters the window, moves once, and is dropped or leaves again. Gives the effect
// that the window answered last.
std::int32_t dragInto(HWND hWnd, POINT at, const DragContent& content, std::int32_t allowed,
                      bool drop);

// A drag out of a window goes to this in place of the desktop; it gives what was done.
using DragHook = std::function<std::int32_t(const DragContent& content, std::int32_t allowed,
                                            const DragFeedback& feedback)>;
void setDragHook(DragHook hook);

// ---- Menus

// Where an item of a bar or of an open popup shows, in screen pixels; empty when it does not.
[[nodiscard]] RECT menuItemPlace(HMENU hMenu, int position);
[[nodiscard]] bool isMenuOpen(HMENU hMenu);  // a popup
// The mouse in the middle of that place; arguments as for mouse.
void mouseOnMenu(HMENU hMenu, int position, MouseAction action, WPARAM button = 0, WPARAM down = 0);
// A press and a release of a key, for the popup that opened last.
void pressMenuKey(std::int32_t key, TextView typed = {}, WPARAM modifiers = 0);
// What screen readers learn, a line for each item: its role, its name, its states.
[[nodiscard]] std::string accessibleItems(HMENU hMenu);
// The bar or the popup as it shows, from (0, 0); its size.
SIZE paintMenu(HMENU hMenu, HDC hDC);

// ---- Time

// Timers follow advanceTimers instead of the real time; only those started after this call.
void setManualTimers(bool manual);
// Moves GetTickCount on and fires what becomes due on the way, in order, at its own tick.
void advanceTimers(std::uint32_t milliseconds);
void failTimers(bool fails);  // SetTimer gives 0
[[nodiscard]] int runningTimers();

// ---- Screens

struct Screen {
    RECT bounds, work;
    bool primary = false;
    int bitsPerPixel = 32;
    int dpi = 96;
};
// The resolution of the first one is that of drawing surfaces. An empty list: the desktop's, 96
// dpi.
void setScreens(std::vector<Screen> screens);
void setMetric(int index, std::optional<int> value);

// ---- Helpers of the desktop (accessibility.h)

// What a screen reader finds out about a window, or about a cell of its table (row -1 is the
// header), as one line: role, name in quotes, value, states. "nothing" when there is no such thing.
[[nodiscard]] std::string describeAccessible(HWND hWnd,
                                             std::optional<std::pair<int, int>> cell = {});
bool doAccessibleAction(HWND hWnd);  // the first one that the window offers
// While it listens, what windows tell goes to a log: one line each, what has changed and the name.
// The moves of the focus from window to window are told by the desktop's library.
void listenAccessible(bool listens);
[[nodiscard]] std::string takeAccessibleLog();

// ---- Dialogs

// Answers dialogs in place of a person, in the order of asking, and writes down what was asked, one
// line for each dialog. A dialog for which no answer is left is cancelled, and its line starts with
// "UNANSWERED ". The innermost script counts.
class DialogScript {
public:
    DialogScript();
    ~DialogScript();
    DialogScript(const DialogScript&) = delete;
    DialogScript& operator=(const DialogScript&) = delete;

    void answerMessageBox(int button);
    // A path in the inside form, as the person would pick it; an empty one cancels.
    void answerFile(Text path, std::uint32_t filterIndex = 0);
    void answerFolder(Text path);
    void answerColor(std::optional<COLORREF> color);  // nullopt cancels
    void answerFont(const std::optional<LOGFONTA>& font, int points = 0, COLORREF color = 0);

    [[nodiscard]] const std::string& log() const { return m_log; }

    // For the dialogs: notes what was asked and gives the next answer of that kind.
    struct Answer {
        std::string kind{};
        int button = 0;  // 0 cancels
        Text path{};     // so does an empty one
        std::uint32_t filterIndex = 0;
        std::optional<COLORREF> color{};
        std::optional<LOGFONTA> font{};
        int points = 0;
    };
    [[nodiscard]] Answer next(const std::string& kind, const std::string& question);

private:
    std::deque<Answer> m_answers;
    std::string m_log;
    DialogScript* m_outer;
};

[[nodiscard]] int openFolderItems();  // of SHBrowseForFolder, not yet given back

// ---- Shell and settings

// Called in place of ShellExecuteW's work; its result is that of ShellExecuteW.
using ShellHook = std::function<std::intptr_t(const ShellRequest&)>;
void setShell(ShellHook hook);
// Called in place of the desktop with each address (of a page or file) that ShellExecuteW would
// have it open. Whether something opened it.
void setAddressOpener(std::function<bool(const std::string& address)> opener);
// Where the settings lie, a directory in the system's own spelling.
void setSettingsFolder(std::optional<std::string> folder);

// The values of the registry (registry.h) in place of those of this desktop.
struct RegistryValue {
    std::string key, name;
    std::uint32_t type = 0;  // REG_...
    std::string bytes;
};
void setRegistry(std::optional<std::vector<RegistryValue>> values);

}  // namespace platform::test
