// platform/base/internal.h: what the sources of this folder share. Nobody else includes it.
#pragma once
#include "platform/base/text.h"
#include "platform/base/version.h"

#include <array>
#include <cerrno>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "platform/base/testhooks.h"

namespace platform::internal {

// What tests have set in place of the system's answers (testhooks.h).
struct Hooks {
    struct Fault {
        int skip = 0;   // operations that still succeed
        int times = 0;  // failures after them
    };

    bool faultsArmed = false;
    std::array<Fault, test::kFileOpCount> faults;
    std::optional<std::uint64_t> bytesToRead, bytesToWrite;  // until requests fail

    bool versionQueryFails = false;
    std::optional<OSVERSIONINFOA> version;
    std::optional<std::uint32_t> tickCount;
    std::optional<std::string> locale;
};
extern Hooks hooks;  // testhooks.cpp

bool takeFault(test::FileOp op);  // testhooks.cpp
// Whether a test wants this operation to fail. To be asked once for each operation.
inline bool mustFail(test::FileOp op) { return hooks.faultsArmed && takeFault(op); }

// Repeats a system call as long as a signal cuts it off.
template <typename Call> auto retried(Call call) {
    auto result = call();
    while (result == -1 && errno == EINTR) result = call();
    return result;
}

// An open file descriptor, closed at the end.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int fd) : m_fd(fd) {}
    Descriptor(Descriptor&& other) noexcept : m_fd(std::exchange(other.m_fd, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(m_fd, other.m_fd);
        return *this;
    }
    ~Descriptor() {
        if (m_fd >= 0)
            ::close(m_fd);  // data is on its way by write; an error here says nothing new
    }

    explicit operator bool() const { return m_fd >= 0; }
    [[nodiscard]] int get() const { return m_fd; }

private:
    int m_fd = -1;
};

// Values by handles above 0. A handle that was given back is not found again, even when its place
// has been taken anew.
template <typename T> class HandleTable {
public:
    // 0 when the table is full.
    std::int32_t add(T value) {
        std::size_t place = m_slots.size();
        if (!m_free.empty()) {
            place = m_free.back();
            m_free.pop_back();
        } else {
            if (place == kMostSlots) return 0;
            m_slots.emplace_back();
        }
        Slot& slot = m_slots[place];
        slot.generation = (slot.generation + 1) & 0x7FFF;
        slot.handle = (slot.generation << 16) | static_cast<std::int32_t>(place + 1);
        slot.value = std::move(value);
        return slot.handle;
    }

    // Null for a handle that is not in use.
    T* find(std::int32_t handle) {
        const std::size_t place = static_cast<std::size_t>(handle & 0xFFFF) - 1;
        if (handle <= 0 || place >= m_slots.size() || m_slots[place].handle != handle) {
            return nullptr;
        }
        return &m_slots[place].value;
    }

    bool remove(std::int32_t handle) {
        if (find(handle) == nullptr) return false;
        const std::size_t place = static_cast<std::size_t>(handle & 0xFFFF) - 1;
        m_slots[place].handle = 0;
        m_slots[place].value = T();
        m_free.push_back(place);
        return true;
    }

    [[nodiscard]] std::size_t count() const { return m_slots.size() - m_free.size(); }

private:
    static constexpr std::size_t kMostSlots = 0xFFFE;
    struct Slot {
        std::int32_t handle = 0;  // 0: free
        std::int32_t generation = 0;
        T value{};
    };
    std::vector<Slot> m_slots;
    std::vector<std::size_t> m_free;
};

TextView withoutLongPathPrefix(TextView path);  // paths.cpp

// What the system tells of the file under a path: of a link's target, or of the link itself when
// that leads nowhere.
struct FileFacts {
    struct statx info;
    bool isLink;
};
bool queryFile(const std::string& systemPath, FileFacts& facts);  // files.cpp
// The FILE_ATTRIBUTE_ bits; name is the last element of the path.
std::uint32_t attributesOf(const FileFacts& facts, std::string_view name);

// The name of the user's locale for a category such as "LC_CTYPE"; "C" when there is none.
std::string userLocale(const char* category);  // codepages.cpp
// The same in ICU's spelling ("zh_TW" for "zh_TW.UTF-8"); "root" for "C".
std::string icuLocale(const char* category);  // collation.cpp

// The locale has changed: what was derived from it is worked out anew.
void forgetCodePage();  // codepages.cpp
void forgetCollator();  // collation.cpp
void forgetNumbers();   // numbers.cpp

}  // namespace platform::internal
