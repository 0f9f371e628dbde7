// win/clsWinProp.h: values by window and key, the store behind MSubclass. Only MSubclass and its
// tests include this.
//
// Each window with entries has a list of them in the order of their making; the list goes with its
// last entry. The keys of an entry, with h the handle, m the message and i an index from 1, all
// decimal:
//
//   h        the window's previous procedure
//   Ch       how many attachments the window has, over all messages
//   h#mC     how many attachments message m has
//   h#m#i    the i-th sink of message m
//   h#mRi    the mode of that sink
//
// Every message to an attached window asks for one or two of them. So a key is carried as numbers
// that are found without making its text; the text is made once, for the entry.
#pragma once
#include "platform/window/types.h"

#include <string>

class WinPropKey {
public:
    static constexpr WinPropKey procedure() { return {Kind::Procedure, 0, 0}; }
    static constexpr WinPropKey attachments() { return {Kind::Attachments, 0, 0}; }
    static constexpr WinPropKey count(std::uint32_t uMsg) { return {Kind::Count, uMsg, 0}; }
    static constexpr WinPropKey sink(std::uint32_t uMsg, std::int32_t index) {
        return {Kind::Sink, uMsg, index};
    }
    static constexpr WinPropKey mode(std::uint32_t uMsg, std::int32_t index) {
        return {Kind::Mode, uMsg, index};
    }

    [[nodiscard]] Text text(platform::HWND hWnd) const;
    // The same number for the same key and no other, within one window.
    [[nodiscard]] constexpr std::uint64_t number() const {
        return static_cast<std::uint64_t>(m_uMsg) << 32 | static_cast<std::uint64_t>(m_kind) << 29 |
               static_cast<std::uint32_t>(m_index);
    }

private:
    enum class Kind : std::uint8_t { Procedure, Attachments, Count, Sink, Mode };
    constexpr WinPropKey(Kind kind, std::uint32_t uMsg, std::int32_t index)
        : m_uMsg(uMsg), m_index(index), m_kind(kind) {}
    std::uint32_t m_uMsg;
    std::int32_t m_index;  // below 2 to the power 29
    Kind m_kind;
};

// One entry.
class clsWinProp {
public:
    platform::HWND hWnd = 0;
    Text lpString;            // the key
    std::intptr_t hData = 0;  // the value, never 0; wide enough for a pointer
};

// 0 for a missing window or key.
[[nodiscard]] std::intptr_t WinPropGet(platform::HWND hWnd, WinPropKey key);
// Makes or changes the entry; the value 0 removes it.
void WinPropSet(platform::HWND hWnd, WinPropKey key, std::intptr_t hData);
// Removes the entry and gives its value; 0 without one.
std::intptr_t WinPropRemove(platform::HWND hWnd, WinPropKey key);
void WinPropRemoveWindow(platform::HWND hWnd);  // with all its entries

// For tests: the window's entries in the order of their making, "Ch=2 h#15C=1 ...", the handle
// written as h, and pointers as *. Empty without any.
[[nodiscard]] std::string dumpWinProps(platform::HWND hWnd);
[[nodiscard]] std::size_t windowsWithProps();
