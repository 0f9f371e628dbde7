// The pixels of bitmaps: their memory, their depths, and the operations that make and describe
// them.
#include "platform/window/surface_internal.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>
#if defined(__x86_64__) && defined(__GNUC__)
#include <immintrin.h>
#endif

namespace platform {
namespace {

// Under the address sanitizer every block is of exact size and given back at once, so that a step
// over its end is found.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kKeepBlocks = false;
#elif defined(__has_feature)
constexpr bool kKeepBlocks = !__has_feature(address_sanitizer);
#else
constexpr bool kKeepBlocks = true;
#endif

// Blocks that were given back, by size in powers of two. Drawing a picture or a button makes and
// drops surfaces of the same few sizes all the time.
class BlockStore {
public:
    using Block = std::unique_ptr<std::uint8_t[]>;

    BlockStore() {
        for (auto& blocks : m_blocks) blocks.reserve(kMostBlocks);
    }

    static std::size_t blockSize(std::size_t size) {
        if (!kKeepBlocks || size > kLargest) return size;
        std::size_t rounded = kSmallest;
        while (rounded < size) rounded *= 2;
        return rounded;
    }
    Block take(std::size_t blockSize) {
        auto* blocks = of(blockSize);
        if (blocks != nullptr && !blocks->empty()) {
            Block block = std::move(blocks->back());
            blocks->pop_back();
            m_kept -= blockSize;
            return block;
        }
        try {
            return std::make_unique_for_overwrite<std::uint8_t[]>(blockSize);
        } catch (const std::bad_alloc&) {
            return nullptr;  // the caller has a result for that
        }
    }
    void giveBack(Block block, std::size_t blockSize) {
        auto* blocks = of(blockSize);
        if (blocks == nullptr || blocks->size() == kMostBlocks || m_kept + blockSize > kMostKept) {
            return;
        }
        blocks->push_back(std::move(block));
        m_kept += blockSize;
    }

private:
    static constexpr std::size_t kSmallest = 256;
    static constexpr std::size_t kLargest = std::size_t{16} << 20;
    static constexpr std::size_t kClasses = 17;     // 256 bytes to 16 MiB
    static constexpr std::size_t kMostBlocks = 64;  // of a class
    static constexpr std::size_t kMostKept = std::size_t{32} << 20;

    std::vector<Block>* of(std::size_t blockSize) {
        if (!kKeepBlocks || blockSize > kLargest) return nullptr;
        std::size_t index = 0;
        while (kSmallest << index < blockSize) ++index;
        return &m_blocks[index];
    }
    std::array<std::vector<Block>, kClasses> m_blocks;
    std::size_t m_kept = 0;  // bytes
};

BlockStore& blockStore() {
    static BlockStore store;
    return store;
}

// ---- Rows of equal pixels. Only the widest stores keep up with memset, and only the processor's
// own string store does where a run is long.

struct Rows {
    std::uint32_t* first;
    std::ptrdiff_t stride;  // pixels from a row to the next
    std::size_t width, height;
};

#if defined(__x86_64__) && defined(__GNUC__)
// Rows of at least 8 pixels.
[[gnu::target("avx2")]] void fillWide(const Rows& rows, std::uint32_t value) {
    const __m256i eight = _mm256_set1_epi32(static_cast<int>(value));
    std::uint32_t* row = rows.first;
    for (std::size_t y = 0; y < rows.height; ++y, row += rows.stride) {
        std::uint32_t* last = row + rows.width - 8;
        for (std::uint32_t* at = row; at < last; at += 8) {
            _mm256_storeu_si256(reinterpret_cast<__m256i*>(at), eight);
        }
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(last), eight);
    }
}

const bool kWideStores = __builtin_cpu_supports("avx2") != 0;

bool fillFast(const Rows& rows, std::uint32_t value) {
    constexpr std::size_t kLong = 512;
    if (rows.width >= kLong) {
        std::uint32_t* row = rows.first;
        for (std::size_t y = 0; y < rows.height; ++y, row += rows.stride) {
            std::uint32_t* at = row;
            std::size_t count = rows.width;
            asm volatile("rep stosl" : "+D"(at), "+c"(count) : "a"(value) : "memory");
        }
        return true;
    }
    if (rows.width < 8 || !kWideStores) return false;
    fillWide(rows, value);
    return true;
}
#else
bool fillFast(const Rows&, std::uint32_t) { return false; }
#endif

void fillRows(const Rows& rows, std::uint32_t value) {
    if (fillFast(rows, value)) return;
    std::uint32_t* row = rows.first;
    for (std::size_t y = 0; y < rows.height; ++y, row += rows.stride) {
        std::fill_n(row, rows.width, value);
    }
}

constexpr std::uint32_t kOpaque = 0xFF000000U;

std::uint32_t pixelOf(const RGBQUAD& entry) {
    return kOpaque | static_cast<std::uint32_t>(entry.rgbRed) << 16 |
           static_cast<std::uint32_t>(entry.rgbGreen) << 8 | entry.rgbBlue;
}

// Monochrome bits as colours: white from the middle of the range on.
constexpr std::uint32_t kBlack = kOpaque, kWhite = 0xFFFFFFFFU;
std::uint32_t brightBit(std::uint32_t xrgb) {
    return (xrgb >> 16 & 0xFF) + (xrgb >> 8 & 0xFF) + (xrgb & 0xFF) > 382 ? 1 : 0;
}

std::uint32_t valueOfPixel(const BitmapRecord& bitmap, std::uint32_t xrgb) {
    if (bitmap.bitsPerPixel >= 24) return xrgb | kOpaque;
    return bitmap.colors ? bitmap.colors->closest(xrgb) : brightBit(xrgb);
}

}  // namespace

PixelMemory::PixelMemory(std::size_t size)
    : m_size(BlockStore::blockSize(size)), m_block(blockStore().take(m_size)) {}

PixelMemory::~PixelMemory() {
    if (m_block) blockStore().giveBack(std::move(m_block), m_size);
}

HandleTable<BitmapRecord>& bitmapTable() {
    (void)blockStore();  // must outlive the bitmaps
    static HandleTable<BitmapRecord> table(HandleKind::Bitmap);
    return table;
}

std::uint32_t ColorTable::closest(std::uint32_t xrgb) const {
    constexpr std::size_t kKnown = 1024;
    xrgb &= 0xFFFFFF;
    if (m_known.empty()) m_known.resize(kKnown);
    Known& known = m_known[xrgb * 0x9E3779B1U >> 22];
    if (known.xrgb == xrgb) return known.index;

    const int red = static_cast<int>(xrgb >> 16), green = static_cast<int>(xrgb >> 8 & 0xFF),
              blue = static_cast<int>(xrgb & 0xFF);
    int least = 4 * 255 * 255;
    std::uint32_t index = 0;
    for (std::size_t i = 0; i < entries.size() && least > 0; ++i) {
        const int r = entries[i].rgbRed - red, g = entries[i].rgbGreen - green,
                  b = entries[i].rgbBlue - blue;
        const int distance = r * r + g * g + b * b;
        if (distance < least) {
            least = distance;
            index = static_cast<std::uint32_t>(i);
        }
    }
    known = {xrgb, index};
    return index;
}

BitmapRecord newBitmap(int width, int height, int bitsPerPixel, bool section) {
    BitmapRecord bitmap;
    if (width < 1 || height < 1 || width > kMaxBitmapExtent || height > kMaxBitmapExtent) {
        return bitmap;
    }
    const std::int64_t rowBytes = (std::int64_t{width} * bitsPerPixel + 31) / 32 * 4;
    const std::int64_t bytes = rowBytes * height;
    if (bytes > kMaxBitmapBytes) return bitmap;
    bitmap.memory = PixelMemory(static_cast<std::size_t>(bytes));
    std::uint8_t* memory = bitmap.memory.get();
    if (memory == nullptr) return bitmap;

    bitmap.width = width;
    bitmap.height = height;
    bitmap.bitsPerPixel = bitsPerPixel;
    bitmap.section = section;
    bitmap.stride = section ? -rowBytes : rowBytes;
    bitmap.top = section ? memory + rowBytes * (height - 1) : memory;
    if (bitsPerPixel == 32 && !section) {
        fillValue(bitmap, {0, 0, width, height}, kBlack);
    } else {
        std::memset(memory, 0, static_cast<std::size_t>(bytes));
    }
    return bitmap;
}

BitmapRecord copyOfBitmap(const BitmapRecord& bitmap) {
    BitmapRecord copied =
        newBitmap(bitmap.width, bitmap.height, bitmap.bitsPerPixel, bitmap.section);
    if (copied.top == nullptr) return copied;
    const auto bytes =
        static_cast<std::size_t>(std::abs(bitmap.stride)) * static_cast<std::size_t>(bitmap.height);
    std::memcpy(copied.memory.get(), bitmap.memory.get(), bytes);
    if (bitmap.colors) copied.colors = std::make_unique<ColorTable>(*bitmap.colors);
    return copied;
}

// ---- Values and pixels

void readValues(const BitmapRecord& bitmap, int x, int y, std::span<std::uint32_t> values) {
    const std::uint8_t* row = bitmap.top + y * bitmap.stride;
    const auto first = static_cast<std::size_t>(x);
    switch (bitmap.bitsPerPixel) {
    case 32: {
        const std::uint32_t* from = bitmap.row(y) + first;
        for (std::size_t i = 0; i < values.size(); ++i) values[i] = from[i] | kOpaque;
        break;
    }
    case 24:
        row += first * 3;
        for (std::uint32_t& value : values) {
            value = kOpaque | static_cast<std::uint32_t>(row[2]) << 16 |
                    static_cast<std::uint32_t>(row[1]) << 8 | row[0];
            row += 3;
        }
        break;
    case 8:
        std::copy_n(row + first, values.size(), values.begin());
        break;
    case 4:
        for (std::size_t i = 0; i < values.size(); ++i) {
            const std::size_t at = first + i;
            values[i] = at % 2 == 0 ? row[at / 2] >> 4 : row[at / 2] & 0xF;
        }
        break;
    default:
        for (std::size_t i = 0; i < values.size(); ++i) {
            const std::size_t at = first + i;
            values[i] = row[at / 8] >> (7 - at % 8) & 1;
        }
    }
}

void writeValues(BitmapRecord& bitmap, int x, int y, std::span<const std::uint32_t> values) {
    std::uint8_t* row = bitmap.top + y * bitmap.stride;
    const auto first = static_cast<std::size_t>(x);
    switch (bitmap.bitsPerPixel) {
    case 32: {
        std::uint32_t* to = bitmap.row(y) + first;
        for (std::size_t i = 0; i < values.size(); ++i) to[i] = values[i] | kOpaque;
        break;
    }
    case 24:
        row += first * 3;
        for (const std::uint32_t value : values) {
            row[0] = static_cast<std::uint8_t>(value);
            row[1] = static_cast<std::uint8_t>(value >> 8);
            row[2] = static_cast<std::uint8_t>(value >> 16);
            row += 3;
        }
        break;
    case 8:
        row += first;
        for (const std::uint32_t value : values) *row++ = static_cast<std::uint8_t>(value);
        break;
    case 4:
        for (std::size_t i = 0; i < values.size(); ++i) {
            std::uint8_t& both = row[(first + i) / 2];
            both = (first + i) % 2 == 0 ? static_cast<std::uint8_t>((both & 0x0F) | values[i] << 4)
                                        : static_cast<std::uint8_t>((both & 0xF0) | values[i]);
        }
        break;
    default:
        for (std::size_t i = 0; i < values.size(); ++i) {
            const auto bit = static_cast<std::uint8_t>(0x80 >> (first + i) % 8);
            std::uint8_t& eight = row[(first + i) / 8];
            eight = static_cast<std::uint8_t>(values[i] != 0 ? eight | bit : eight & ~bit);
        }
    }
}

void readPixels(const BitmapRecord& bitmap, int x, int y, std::span<std::uint32_t> pixels) {
    readValues(bitmap, x, y, pixels);
    if (bitmap.bitsPerPixel >= 24) return;
    for (std::uint32_t& pixel : pixels) {
        const std::uint32_t value = pixel;
        if (bitmap.colors) {
            pixel = pixelOf(bitmap.colors->entries[value]);
        } else {
            pixel = value != 0 ? kWhite : kBlack;
        }
    }
}

void writePixels(BitmapRecord& bitmap, int x, int y, std::span<const std::uint32_t> pixels) {
    if (bitmap.bitsPerPixel >= 24) {
        writeValues(bitmap, x, y, pixels);
        return;
    }
    std::array<std::uint32_t, 256> values;
    while (!pixels.empty()) {
        const std::size_t count = std::min(pixels.size(), values.size());
        for (std::size_t i = 0; i < count; ++i) values[i] = valueOfPixel(bitmap, pixels[i]);
        writeValues(bitmap, x, y, std::span(values).first(count));
        pixels = pixels.subspan(count);
        x += static_cast<int>(count);
    }
}

std::uint32_t valueOf(const BitmapRecord& bitmap, COLORREF color) {
    return valueOfPixel(bitmap, pixelOf(color));
}

void fillValue(BitmapRecord& bitmap, const RECT& rect, std::uint32_t value) {
    if (isEmpty(rect)) return;
    const auto width = static_cast<std::size_t>(rect.right - rect.left);
    if (bitmap.bitsPerPixel == 32) {
        const auto height = static_cast<std::size_t>(rect.bottom - rect.top);
        if (rect.right - rect.left == bitmap.width) {  // whole rows touch each other
            std::uint32_t* lowest = bitmap.row(bitmap.stride > 0 ? rect.top : rect.bottom - 1);
            fillRows({lowest, 0, width * height, 1}, value);
        } else {
            fillRows({bitmap.row(rect.top) + rect.left, bitmap.stride / 4, width, height}, value);
        }
        return;
    }
    std::array<std::uint32_t, 256> values;
    values.fill(value);
    for (int y = rect.top; y < rect.bottom; ++y) {
        for (int x = rect.left; x < rect.right;) {
            const int count = std::min(rect.right - x, static_cast<int>(values.size()));
            writeValues(bitmap, x, y, std::span(values).first(static_cast<std::size_t>(count)));
            x += count;
        }
    }
}

// ---- Bitmaps

HBITMAP CreateCompatibleBitmap(HDC hDC, int width, int height) {
    const DcRecord* dc = dcOf(hDC);
    if (dc == nullptr || width < 0 || height < 0) return 0;
    const bool nothing = width == 0 || height == 0;
    const int bits = nothing || dc->bitmap->monochrome() ? 1 : 32;
    BitmapRecord bitmap = newBitmap(nothing ? 1 : width, nothing ? 1 : height, bits, false);
    return bitmap.top != nullptr ? addObject(bitmapTable(), std::move(bitmap)) : 0;
}

HBITMAP CreateDIBSection(HDC, const BITMAPINFO& info, std::uint32_t usage, void*& pBits) {
    pBits = nullptr;
    const BITMAPINFOHEADER& header = info.bmiHeader;
    const int bits = header.biBitCount;
    const bool known = bits == 1 || bits == 4 || bits == 8 || bits == 24 || bits == 32;
    if (!known || header.biPlanes != 1 || header.biCompression != BI_RGB ||
        usage != DIB_RGB_COLORS) {
        return 0;
    }
    BitmapRecord bitmap = newBitmap(header.biWidth, header.biHeight, bits, true);
    if (bitmap.top == nullptr) return 0;
    if (bits <= 8) {
        bitmap.colors = std::make_unique<ColorTable>();
        bitmap.colors->entries.resize(std::size_t{1} << bits);
        const std::size_t given = std::min(info.bmiColors.size(), bitmap.colors->entries.size());
        std::copy_n(info.bmiColors.begin(), given, bitmap.colors->entries.begin());
    }
    void* pixels = bitmap.memory.get();
    const HBITMAP handle = addObject(bitmapTable(), std::move(bitmap));
    if (handle != 0) pBits = pixels;
    return handle;
}

std::uint32_t GetDIBColorTable(HDC hDC, std::uint32_t first, std::uint32_t count,
                               RGBQUAD* pColors) {
    const DcRecord* dc = dcOf(hDC);
    if (dc == nullptr || !dc->bitmap->colors) return 0;
    const std::vector<RGBQUAD>& entries = dc->bitmap->colors->entries;
    if (first >= entries.size()) return 0;
    const auto copied = std::min(count, static_cast<std::uint32_t>(entries.size()) - first);
    std::copy_n(entries.begin() + first, copied, pColors);
    return copied;
}

int GetObjectA(HGDIOBJ hObject, BITMAP& record) {
    const BitmapRecord* bitmap = bitmapOf(hObject);
    if (bitmap == nullptr) return 0;
    record.bmType = 0;
    record.bmWidth = bitmap->width;
    record.bmHeight = bitmap->height;
    record.bmWidthBytes = static_cast<std::int32_t>(std::abs(bitmap->stride));
    record.bmPlanes = 1;
    record.bmBitsPixel = static_cast<std::uint16_t>(bitmap->bitsPerPixel);
    record.bmBits = bitmap->section ? bitmap->memory.get() : nullptr;
    return sizeof(BITMAP);
}

}  // namespace platform
