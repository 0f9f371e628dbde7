#include "win/clsWinProp.h"

#include <algorithm>
#include <unordered_map>
#include <vector>

using platform::HWND;

namespace {

Text decimal(std::uint64_t number) {
    const std::string digits = std::to_string(number);
    return Text(digits.begin(), digits.end());
}

// A number that is spread already: handles and keys differ in their low bits.
struct AsItIs {
    std::size_t operator()(std::uint64_t number) const { return number ^ number >> 29; }
};

// The entries of one window: an ordered list, and the way from a key to its place there.
class WindowProps {
public:
    [[nodiscard]] std::intptr_t get(WinPropKey key) const {
        const auto place = m_places.find(key.number());
        return place == m_places.end() ? 0 : m_entries[place->second].hData;
    }
    void set(HWND hWnd, WinPropKey key, std::intptr_t hData) {
        if (const auto place = m_places.find(key.number()); place != m_places.end()) {
            m_entries[place->second].hData = hData;
            return;
        }
        m_entries.push_back({hWnd, key.text(hWnd), hData});
        m_places.emplace(key.number(), m_entries.size() - 1);
    }
    std::intptr_t remove(WinPropKey key) {
        const auto found = m_places.find(key.number());
        if (found == m_places.end()) return 0;
        const std::size_t gone = found->second;
        const std::intptr_t hData = m_entries[gone].hData;
        m_places.erase(found);
        m_entries.erase(m_entries.begin() + static_cast<std::ptrdiff_t>(gone));
        for (auto& [number, place] : m_places) {
            if (place > gone) --place;
        }
        return hData;
    }
    [[nodiscard]] const std::vector<clsWinProp>& entries() const { return m_entries; }

private:
    std::vector<clsWinProp> m_entries;
    std::unordered_map<std::uint64_t, std::size_t, AsItIs> m_places;
};

std::unordered_map<HWND, WindowProps>& store() {
    static std::unordered_map<HWND, WindowProps> all;
    return all;
}

}  // namespace

Text WinPropKey::text(HWND hWnd) const {
    const Text message = decimal(hWnd) + u'#' + decimal(m_uMsg);
    const Text index = decimal(static_cast<std::uint32_t>(m_index));
    switch (m_kind) {
    case Kind::Procedure:
        return decimal(hWnd);
    case Kind::Attachments:
        return u'C' + decimal(hWnd);
    case Kind::Count:
        return message + u'C';
    case Kind::Sink:
        return message + u'#' + index;
    case Kind::Mode:
        return message + u'R' + index;
    }
    return {};
}

std::intptr_t WinPropGet(HWND hWnd, WinPropKey key) {
    const auto window = store().find(hWnd);
    return window == store().end() ? 0 : window->second.get(key);
}

void WinPropSet(HWND hWnd, WinPropKey key, std::intptr_t hData) {
    if (hData == 0) {
        (void)WinPropRemove(hWnd, key);
    } else {
        store()[hWnd].set(hWnd, key, hData);
    }
}

std::intptr_t WinPropRemove(HWND hWnd, WinPropKey key) {
    const auto window = store().find(hWnd);
    if (window == store().end()) return 0;
    const std::intptr_t hData = window->second.remove(key);
    if (window->second.entries().empty()) store().erase(window);
    return hData;
}

void WinPropRemoveWindow(HWND hWnd) { store().erase(hWnd); }

std::string dumpWinProps(HWND hWnd) {
    const auto window = store().find(hWnd);
    if (window == store().end()) return {};
    const std::string handle = std::to_string(hWnd);
    std::string text;
    for (const clsWinProp& entry : window->second.entries()) {
        std::string key = toUtf8(entry.lpString);
        key.replace(key.find(handle), handle.size(), "h");
        constexpr std::intptr_t kSmall = 0x10000;  // no pointer is that low
        const bool small = entry.hData < kSmall && entry.hData > -kSmall;
        text += (text.empty() ? "" : " ") + key + '=' + (small ? std::to_string(entry.hData) : "*");
    }
    return text;
}

std::size_t windowsWithProps() { return store().size(); }
