// reference MAIN TRANSLATED            counts rows as `quillmere-cli status --json` does
// reference --merge TRANSLATED OUT     reads, indexes and writes a file back
//
// The same jobs written plainly, without what makes them a product: each file in one request, one
// pass for lines and separators, one hash look-up a key; no case folding, no repeated keys or
// heads, no messages. What whole processes are measured against (whole_process.cpp).
#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace {

using View = std::u16string_view;

[[noreturn]] void fail(const char* what) {
    std::perror(what);
    std::exit(EXIT_FAILURE);
}

// Memory that is not cleared before it is filled.
template <class T> struct Buffer {
    explicit Buffer(std::size_t capacity) : data(std::make_unique_for_overwrite<T[]>(capacity)) {}
    std::unique_ptr<T[]> data;
    std::size_t size = 0;
};

Buffer<unsigned char> readFile(const char* path) {
    const int file = open(path, O_RDONLY);
    struct stat status {};
    if (file < 0 || fstat(file, &status) != 0) fail(path);
    Buffer<unsigned char> bytes(static_cast<std::size_t>(status.st_size));
    bytes.size = static_cast<std::size_t>(status.st_size);
    if (read(file, bytes.data.get(), bytes.size) != status.st_size) fail(path);
    close(file);
    return bytes;
}

// UTF-16 units of a file by its first byte; plain bytes are widened one by one.
Buffer<char16_t> readText(const char* path) {
    const auto bytes = readFile(path);
    const unsigned char* in = bytes.data.get();
    const unsigned char* end = in + bytes.size;
    Buffer<char16_t> text(bytes.size);
    char16_t* out = text.data.get();
    if (bytes.size >= 2 && *in == 0xFF) {
        text.size = bytes.size / 2 - 1;
        std::memcpy(out, in + 2, text.size * 2);
        return text;
    }
    if (bytes.size >= 3 && *in == 0xEF) {
        for (in += 3; in < end;) {
            if (*in < 0x80) {
                *out++ = *in++;
            } else if (*in < 0xE0) {
                *out++ = static_cast<char16_t>((in[0] & 31) << 6 | (in[1] & 63));
                in += 2;
            } else {
                *out++ =
                    static_cast<char16_t>((in[0] & 15) << 12 | (in[1] & 63) << 6 | (in[2] & 63));
                in += 3;
            }
        }
    } else {
        while (in < end) *out++ = *in++;
    }
    text.size = static_cast<std::size_t>(out - text.data.get());
    return text;
}

// The first unit c from `from` on, or `end`.
const char16_t* find(const char16_t* from, const char16_t* end, char16_t c) {
#if defined(__SSE2__)
    const __m128i wanted = _mm_set1_epi16(static_cast<short>(c));
    for (; end - from >= 8; from += 8) {
        const auto units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
        const int hits = _mm_movemask_epi8(_mm_cmpeq_epi16(units, wanted));
        if (hits != 0) return from + __builtin_ctz(static_cast<unsigned>(hits)) / 2;
    }
#endif
    while (from < end && *from != c) ++from;
    return from;
}

View trimmed(const char16_t* from, const char16_t* end) {
    while (from < end && (*from == u' ' || *from == u'\t')) ++from;
    while (from < end && (end[-1] == u' ' || end[-1] == u'\t')) --end;
    return {from, end};
}

std::uint64_t hashOf(View text, std::uint64_t seed) {
    const auto* bytes = reinterpret_cast<const char*>(text.data());
    std::size_t left = text.size() * sizeof(char16_t);
    std::uint64_t hash = seed ^ left;
    const auto mix = [&](std::uint64_t word) {
        __extension__ using Wide = unsigned __int128;
        const Wide product = static_cast<Wide>(hash ^ word) * 0x9E3779B97F4A7C15U;
        hash = static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
    };
    for (std::uint64_t word = 0; left >= sizeof word; left -= sizeof word, bytes += sizeof word) {
        std::memcpy(&word, bytes, sizeof word);
        mix(word);
    }
    std::uint64_t rest = 0;
    std::memcpy(&rest, bytes, left);
    mix(rest);
    return hash;
}

// Calls row(hash of section and key, key, value) for each key row. The hash stands for the section:
// 64 bits are enough for a measurement.
template <class Function> void forEachRow(const Buffer<char16_t>& text, Function row) {
    std::uint64_t section = hashOf({}, 1);
    const char16_t* end = text.data.get() + text.size;
    for (const char16_t* line = text.data.get(); line < end;) {
        const char16_t* lineEnd = find(line, end, u'\n');
        const char16_t* textEnd = lineEnd > line && lineEnd[-1] == u'\r' ? lineEnd - 1 : lineEnd;
        const char16_t* separator = find(line, textEnd, u'=');
        if (separator > line && separator < textEnd) {
            const View key = trimmed(line, separator);
            row(hashOf(key, section), key, trimmed(separator + 1, textEnd));
        } else if (line < textEnd && *line == u'[') {
            section = hashOf({line + 1, find(line, textEnd, u']')}, 1);
        }
        line = lineEnd + 1;
    }
}

class Index {
public:
    explicit Index(const Buffer<char16_t>& text) : m_text(text.data.get()) {
        const auto lines =
            static_cast<std::size_t>(std::count(m_text, m_text + text.size, u'\n') + 1);
        m_slots.resize(std::bit_ceil(lines + lines / 2));
        forEachRow(text, [&](std::uint64_t hash, View key, View value) {
            const auto at = [&](View view) {
                return static_cast<std::uint32_t>(view.data() - m_text);
            };
            find(hash, key) = {hash, at(key), static_cast<std::uint32_t>(key.size()), at(value),
                               static_cast<std::uint32_t>(value.size())};
        });
    }

    [[nodiscard]] View value(std::uint64_t hash, View key) {
        const Slot& slot = find(hash, key);
        return {m_text + slot.value, slot.valueLength};
    }

private:
    struct Slot {
        std::uint64_t hash;
        std::uint32_t key, keyLength;  // 0: free
        std::uint32_t value, valueLength;
    };

    Slot& find(std::uint64_t hash, View key) {
        for (std::size_t i = hash;; ++i) {
            Slot& slot = m_slots[i & (m_slots.size() - 1)];
            if (slot.keyLength == 0) return slot;
            if (slot.hash == hash && View(m_text + slot.key, slot.keyLength) == key) return slot;
        }
    }

    const char16_t* m_text;
    std::vector<Slot> m_slots;
};

int count(const char* mainFile, const char* transFile) {
    const auto mainText = readText(mainFile);
    const auto transText = readText(transFile);
    Index index(transText);
    std::size_t rows = 0;
    std::size_t same = 0;
    std::size_t empty = 0;
    forEachRow(mainText, [&](std::uint64_t hash, View key, View value) {
        const View translation = index.value(hash, key);
        rows += 1;
        empty += translation.empty() ? 1 : 0;
        same += !translation.empty() && translation == value ? 1 : 0;
    });
    std::printf("{\"rows\":%zu,\"translated\":%zu,\"same\":%zu,\"empty\":%zu}\n", rows,
                rows - same - empty, same, empty);
    return EXIT_SUCCESS;
}

int merge(const char* transFile, const char* outFile) {
    const auto text = readText(transFile);
    const Index index(text);
    Buffer<char> out(text.size);
    for (; out.size < text.size; ++out.size) {
        out.data[out.size] = static_cast<char>(text.data[out.size]);
    }
    const int file = open(outFile, O_WRONLY | O_CREAT | O_TRUNC, 0666);
    const auto wanted = static_cast<ssize_t>(out.size);
    if (file < 0 || write(file, out.data.get(), out.size) != wanted) fail(outFile);
    close(file);
    return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 4 && std::string_view(argv[1]) == "--merge") return merge(argv[2], argv[3]);
    if (argc == 3) return count(argv[1], argv[2]);
    std::fputs("usage: reference MAIN TRANSLATED | reference --merge TRANSLATED OUT\n", stderr);
    return 2;
}
