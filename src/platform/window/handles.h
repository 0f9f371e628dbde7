// platform/window/handles.h: 32-bit handles to the objects of the window layer, one table for each
// kind.
//
// A handle carries its kind, the place in the table and how often that place was used before (its
// generation). So a handle of another kind and a handle whose object is gone are both told from a
// living one: find gives nothing, and the operation that was asked does nothing. Handles are never
// 0 and never negative as signed numbers. Everything here belongs to the window thread.
#pragma once
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace platform {

enum class HandleKind : std::uint8_t {
    DeviceContext = 1,
    Bitmap,
    Font,
    Brush,
    Pen,
    Region,
    Icon,
    Window,
    Menu,
    Monitor,
};
constexpr int kHandleKinds = 11;  // one more than the last kind

// How many handles of a kind are alive. Stock objects don't count.
[[nodiscard]] int handleCount(HandleKind kind);
// All living handles as text for leak checks, "bitmap 2, pen 1"; empty when there are none.
[[nodiscard]] std::string liveHandles();

constexpr int kHandleKindShift = 27;        // 4 bits of kind; bit 31 stays clear
constexpr int kHandleGenerationShift = 16;  // 11 bits of generation
constexpr std::uint32_t kHandleIndexMask = 0xFFFF;

// The kind that the bits of a handle tell; the handle may be stale. 0 and other values that no
// table gives out have a kind that is in no enumerator.
constexpr HandleKind handleKind(std::uint32_t handle) {
    return static_cast<HandleKind>(handle >> kHandleKindShift);
}

namespace detail {
inline std::array<int, kHandleKinds> liveHandleCounts{};
}

// The objects of one kind. Records stay where they are in memory as long as they live. Adding and
// removing allocate nothing once the table has grown to what is alive at a time.
template <class Record> class HandleTable {
public:
    explicit HandleTable(HandleKind kind) : m_kind(kind) {}
    HandleTable(const HandleTable&) = delete;
    HandleTable& operator=(const HandleTable&) = delete;

    // Takes the record in and gives its handle; 0 when 65,536 objects of the kind are alive.
    [[nodiscard]] std::uint32_t add(Record record) {
        const std::uint32_t handle = place(std::move(record));
        if (handle != 0) ++detail::liveHandleCounts[static_cast<std::size_t>(m_kind)];
        return handle;
    }
    // The same for an object that lives to the end of the process and doesn't count as alive.
    [[nodiscard]] std::uint32_t addStock(Record record) { return place(std::move(record)); }

    // nullptr for 0, a stale handle and a handle of another kind.
    [[nodiscard]] Record* find(std::uint32_t handle) {
        const std::uint32_t index = handle & kHandleIndexMask;
        if (handle == 0 || index >= m_size) return nullptr;
        Slot& found = slot(index);
        return found.handle == handle ? &found.record : nullptr;
    }

    // Ends the object: the record becomes an empty one, the handle is stale from now on. False for
    // a handle that find doesn't know. Not for stock objects.
    bool remove(std::uint32_t handle) {
        Record* record = find(handle);
        if (record == nullptr) return false;
        const std::uint32_t index = handle & kHandleIndexMask;
        Slot& freed = slot(index);
        freed.handle = 0;
        freed.next = kNone;
        if (m_freeCount++ == 0) {
            m_freeHead = index;
        } else {
            slot(m_freeTail).next = index;
        }
        m_freeTail = index;
        --detail::liveHandleCounts[static_cast<std::size_t>(m_kind)];
        *record = Record();
        return true;
    }

    // Calls f(handle, record) for every object, stock objects included, in no promised order. f may
    // remove the object it is called for.
    template <class F> void forEach(F f) {
        for (std::uint32_t i = 0; i < m_size; ++i) {
            if (const std::uint32_t handle = slot(i).handle; handle != 0) f(handle, slot(i).record);
        }
    }

private:
    static constexpr std::uint32_t kNone = ~0U;
    static constexpr std::uint32_t kChunk = 64;
    // A place is used again only when this many others wait ahead of it: a handle that was kept too
    // long then stays recognisable through 2048 times as many new objects.
    static constexpr std::uint32_t kRest = 32;

    struct Slot {
        Record record{};
        std::uint32_t handle = 0;  // 0 while free
        std::uint32_t generation = 0;
        std::uint32_t next = kNone;  // free places are a queue
    };

    Slot& slot(std::uint32_t index) { return m_chunks[index / kChunk][index % kChunk]; }

    std::uint32_t place(Record&& record) {
        std::uint32_t index = m_freeHead;
        if (m_freeCount > kRest || (m_size > kHandleIndexMask && m_freeCount > 0)) {
            m_freeHead = slot(index).next;
            --m_freeCount;
        } else {
            if (m_size > kHandleIndexMask) return 0;
            if (m_size % kChunk == 0) m_chunks.push_back(std::make_unique<Slot[]>(kChunk));
            index = m_size++;
        }
        Slot& taken = slot(index);
        taken.record = std::move(record);
        taken.generation = (taken.generation + 1) & 0x7FF;
        taken.handle = static_cast<std::uint32_t>(m_kind) << kHandleKindShift |
                       taken.generation << kHandleGenerationShift | index;
        return taken.handle;
    }

    HandleKind m_kind;
    std::vector<std::unique_ptr<Slot[]>> m_chunks;
    std::uint32_t m_size = 0;
    std::uint32_t m_freeHead = kNone, m_freeTail = kNone, m_freeCount = 0;
};

}  // namespace platform
