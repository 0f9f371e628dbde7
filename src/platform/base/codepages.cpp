#include "platform/base/codepages.h"

#include "platform/base/ascii.h"
#include "platform/base/internal.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <memory>
#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>

namespace platform {
namespace {

constexpr std::uint32_t kWestern = 1252;
constexpr char16_t kReplacement = 0xFFFD;

struct KnownPage {
    std::uint32_t page;
    const char* converter;
    bool doubleByte = false;
};

constexpr KnownPage kPages[] = {
    {437, "ibm-437"},
    {737, "ibm-737"},
    {775, "ibm-775"},
    {850, "ibm-850"},
    {852, "ibm-852"},
    {855, "ibm-855"},
    {857, "ibm-857"},
    {858, "ibm-858"},
    {860, "ibm-860"},
    {861, "ibm-861"},
    {862, "ibm-862"},
    {863, "ibm-863"},
    {865, "ibm-865"},
    {866, "ibm-866"},
    {869, "ibm-869"},
    {874, "windows-874-2000"},
    {932, "ibm-943_P15A-2003", true},
    {936, "windows-936-2000", true},
    {949, "windows-949-2000", true},
    {950, "windows-950-2000", true},
    {1250, "ibm-5346_P100-1998"},
    {1251, "ibm-5347_P100-1998"},
    {1252, "ibm-5348_P100-1997"},
    {1253, "ibm-5349_P100-1998"},
    {1254, "ibm-5350_P100-1998"},
    {1255, "ibm-9447_P100-2002"},
    {1256, "ibm-9448_X100-2005"},
    {1257, "ibm-9449_P100-2002"},
    {1258, "ibm-5354_P100-1998"},
};
constexpr std::size_t kPageCount = std::size(kPages);

// The place of a page in kPages; kPageCount for a page that is not there.
std::size_t indexOf(std::uint32_t page) {
    const auto* const found = std::find_if(std::begin(kPages), std::end(kPages),
                                           [&](const KnownPage& k) { return k.page == page; });
    return static_cast<std::size_t>(found - kPages);
}

// ---- The page of the user's language ----------------------------------------------------------

struct LanguagePage {
    std::string_view language;
    std::uint32_t page;
};

constexpr LanguagePage kLanguages[] = {
    {"ar", 1256}, {"az", 1254}, {"ba", 1251}, {"be", 1251}, {"bg", 1251},  {"bs", 1250},
    {"cs", 1250}, {"cv", 1251}, {"el", 1253}, {"et", 1257}, {"fa", 1256},  {"he", 1255},
    {"hr", 1250}, {"hu", 1250}, {"iw", 1255}, {"ja", 932},  {"kk", 1251},  {"ko", 949},
    {"ky", 1251}, {"lt", 1257}, {"lv", 1257}, {"mk", 1251}, {"mn", 1251},  {"os", 1251},
    {"pl", 1250}, {"ps", 1256}, {"ro", 1250}, {"ru", 1251}, {"sah", 1251}, {"sk", 1250},
    {"sl", 1250}, {"sq", 1250}, {"sr", 1251}, {"tg", 1251}, {"th", 874},   {"tr", 1254},
    {"tt", 1251}, {"ug", 1256}, {"uk", 1251}, {"ur", 1256}, {"uz", 1254},  {"vi", 1258},
    {"yi", 1255}, {"zh", 936},
};

bool isOneOf(std::string_view part, std::initializer_list<std::string_view> names) {
    return std::find(names.begin(), names.end(), part) != names.end();
}

std::string_view pageVariable() {
    const char* const value = std::getenv(kCodePageVariable);
    return value != nullptr ? value : "";
}

std::uint32_t pageOfEnvironment() {
    const auto named = codePageNumbered(pageVariable());
    return named ? *named : codePageOfLocale(internal::userLocale("LC_CTYPE"));
}

std::optional<std::uint32_t> overridingPage;
std::uint32_t environmentPage = 0;  // 0: not asked yet

// ---- Pages of single bytes --------------------------------------------------------------------

constexpr std::array<char16_t, 256> makeWesternTable() {
    // 0x80 to 0x9F; the undefined bytes stand for the control units of the same number.
    constexpr char16_t kSpecial[32] = {
        0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
        0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
        0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
    std::array<char16_t, 256> table{};
    for (std::size_t i = 0; i < 256; ++i) {
        table[i] = i >= 0x80 && i < 0xA0 ? kSpecial[i - 0x80] : static_cast<char16_t>(i);
    }
    return table;
}
constexpr std::array<char16_t, 256> kWesternTable = makeWesternTable();

// The way back: the bytes of 256 units in each block, 0 for units that the page lacks. Block 0 is
// the empty one.
struct ReverseTable {
    explicit ReverseTable(const char16_t* table) : bytes(256) {
        for (std::size_t byte = 1; byte < 256; ++byte) {
            const char16_t unit = table[byte];
            if (unit == kReplacement) continue;
            std::uint8_t& block = blockOf[unit >> 8];
            if (block == 0) {
                block = static_cast<std::uint8_t>(bytes.size() / 256);
                bytes.resize(bytes.size() + 256);
            }
            bytes[std::size_t{block} * 256 + (unit & 0xFF)] = static_cast<std::uint8_t>(byte);
        }
    }
    [[nodiscard]] std::uint8_t byteOf(char16_t unit) const {
        return bytes[std::size_t{blockOf[unit >> 8]} * 256 + (unit & 0xFF)];
    }

    std::array<std::uint8_t, 256> blockOf{};
    Bytes bytes;
};

// ---- Converters ---------------------------------------------------------------------------------

// What the converters do where they find nothing: one U+FFFD for a sequence of bytes, one '?' for a
// unit. Above UCNV_IRREGULAR the call only tells of a reset or a close.
void replaceBytes(const void* /*context*/, UConverterToUnicodeArgs* args, const char* /*bytes*/,
                  std::int32_t /*length*/, UConverterCallbackReason reason, UErrorCode* status) {
    if (reason > UCNV_IRREGULAR) return;
    *status = U_ZERO_ERROR;
    const UChar replacement = kReplacement;
    ucnv_cbToUWriteUChars(args, &replacement, 1, 0, status);
}

void replaceUnits(const void* /*context*/, UConverterFromUnicodeArgs* args, const UChar* /*units*/,
                  std::int32_t length, UChar32 /*character*/, UConverterCallbackReason reason,
                  UErrorCode* status) {
    if (reason > UCNV_IRREGULAR) return;
    *status = U_ZERO_ERROR;
    ucnv_cbFromUWriteBytes(args, "??", std::min(length, 2), 0, status);
}

using Converter = std::unique_ptr<UConverter, decltype(&ucnv_close)>;

Converter openConverter(const char* name) {
    UErrorCode status = U_ZERO_ERROR;
    Converter converter(ucnv_open(name, &status), &ucnv_close);
    if (U_FAILURE(status)) return Converter(nullptr, &ucnv_close);
    ucnv_setToUCallBack(converter.get(), replaceBytes, nullptr, nullptr, nullptr, &status);
    ucnv_setFromUCallBack(converter.get(), replaceUnits, nullptr, nullptr, nullptr, &status);
    return converter;
}

// What a page needs, made when it is first used.
struct LoadedPage {
    std::unique_ptr<std::array<char16_t, 256>> table;
    std::unique_ptr<ReverseTable> reverse;
    Converter converter{nullptr, &ucnv_close};
};

LoadedPage& loaded(std::size_t index) {
    static std::array<LoadedPage, kPageCount> pages;
    return pages[index];
}

const char16_t* tableOf(std::size_t index) {
    if (kPages[index].page == kWestern) return kWesternTable.data();
    auto& table = loaded(index).table;
    if (table != nullptr) return table->data();
    table = std::make_unique<std::array<char16_t, 256>>(kWesternTable);
    if (const Converter converter = openConverter(kPages[index].converter)) {
        std::array<char, 256> bytes{};
        for (std::size_t i = 0; i < 256; ++i) bytes[i] = static_cast<char>(i);
        // ASCII stays ASCII, though the converters of the oldest pages swap control characters.
        char16_t* to = table->data() + 0x80;
        const char* from = bytes.data() + 0x80;
        UErrorCode status = U_ZERO_ERROR;
        ucnv_toUnicode(converter.get(), &to, table->data() + 256, &from, bytes.data() + 256,
                       nullptr, true, &status);
    }
    return table->data();
}

const ReverseTable& reverseOf(std::size_t index) {
    auto& reverse = loaded(index).reverse;
    if (reverse == nullptr) reverse = std::make_unique<ReverseTable>(tableOf(index));
    return *reverse;
}

// Null for a page of single bytes, and when the converter is missing.
UConverter* converterOf(std::size_t index) {
    if (!kPages[index].doubleByte) return nullptr;
    Converter& converter = loaded(index).converter;
    if (converter == nullptr) converter = openConverter(kPages[index].converter);
    return converter.get();
}

// The converter of page 932 moves three control characters in a circle; here they are themselves.
constexpr char16_t uncircled(char16_t unit) {
    return unit == 0x1C ? 0x1A : unit == 0x7F ? 0x1C : unit == 0x1A ? 0x7F : unit;
}
constexpr char16_t circled(char16_t unit) { return uncircled(uncircled(unit)); }

Text convertToText(UConverter* converter, const std::uint8_t* bytes, std::size_t count) {
    Text result(count, u'\0');  // a unit needs at least a byte
    const char* from = reinterpret_cast<const char*>(bytes);
    char16_t* to = result.data();
    UErrorCode status = U_ZERO_ERROR;
    ucnv_toUnicode(converter, &to, to + count, &from, from + count, nullptr, true, &status);
    result.resize(static_cast<std::size_t>(to - result.data()));
    return result;
}

Bytes convertToBytes(UConverter* converter, TextView s) {
    Bytes result(s.size() * 2);  // a unit gives at most two bytes
    const char16_t* from = s.data();
    char* const first = reinterpret_cast<char*>(result.data());
    char* to = first;
    UErrorCode status = U_ZERO_ERROR;
    ucnv_fromUnicode(converter, &to, to + result.size(), &from, from + s.size(), nullptr, true,
                     &status);
    result.resize(static_cast<std::size_t>(to - first));
    return result;
}

}  // namespace

std::string internal::userLocale(const char* category) {
    if (hooks.locale) return *hooks.locale;
    for (const char* const name : {"LC_ALL", category, "LANG"}) {
        const char* const value = std::getenv(name);
        if (value != nullptr && value[0] != '\0') return value;
    }
    return "C";
}

void internal::forgetCodePage() { environmentPage = 0; }

std::uint32_t GetACP() {
    if (overridingPage) return *overridingPage;
    if (environmentPage == 0) environmentPage = pageOfEnvironment();
    return environmentPage;
}

bool setAnsiCodePage(std::optional<std::uint32_t> page) {
    if (page && !codePageKnown(*page)) return false;
    overridingPage = page;
    environmentPage = 0;
    return true;
}

std::string unusableCodePageVariable() {
    const std::string_view value = pageVariable();
    return codePageNumbered(value) ? std::string() : std::string(value);
}

bool codePageKnown(std::uint32_t page) { return indexOf(page) != kPageCount; }

std::optional<std::uint32_t> codePageNumbered(std::string_view digits) {
    std::uint32_t page = 0;
    const auto [end, error] = std::from_chars(digits.begin(), digits.end(), page);
    if (error != std::errc() || end != digits.end() || !codePageKnown(page)) return std::nullopt;
    return page;
}

std::uint32_t codePageOfLocale(std::string_view locale) {
    // language[_territory or script]...[.charset][@modifier]
    constexpr std::string_view kSeparators = "_-.@";
    const std::size_t end = std::min(locale.find_first_of(kSeparators), locale.size());
    const std::string_view language = locale.substr(0, end);
    const auto* const found =
        std::find_if(std::begin(kLanguages), std::end(kLanguages),
                     [&](const LanguagePage& l) { return l.language == language; });
    if (found == std::end(kLanguages)) return kWestern;

    std::uint32_t page = found->page;
    for (std::size_t start = end; start < locale.size();) {
        const std::size_t stop =
            std::min(locale.find_first_of(kSeparators, start + 1), locale.size());
        const std::string_view part = locale.substr(start + 1, stop - start - 1);
        start = stop;
        if (page == 936 && isOneOf(part, {"TW", "HK", "MO", "Hant"})) page = 950;
        if (page == 1251 && isOneOf(part, {"latin", "Latn"})) page = 1250;
        if (page != 1251 && isOneOf(part, {"cyrillic", "Cyrl"})) page = 1251;
    }
    return page;
}

const char16_t* singleByteTable(std::uint32_t page) {
    const std::size_t index = indexOf(page);
    if (index == kPageCount) return kWesternTable.data();
    return kPages[index].doubleByte && converterOf(index) != nullptr ? nullptr : tableOf(index);
}

void widenBytes(const std::uint8_t* bytes, std::size_t count, const char16_t* table,
                char16_t* out) {
    std::size_t i = 0;
#if defined(__SSE2__)
    const __m128i zero = _mm_setzero_si128();
    const bool latin = table == kWesternTable.data();  // only 80 to 9F are not their own units
    for (; i + 16 <= count; i += 16) {
        const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + i));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + i), _mm_unpacklo_epi8(block, zero));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + i + 8), _mm_unpackhi_epi8(block, zero));
        auto others = static_cast<unsigned>(
            _mm_movemask_epi8(latin ? _mm_cmplt_epi8(block, _mm_set1_epi8('\xA0')) : block));
        if (others == 0xFFFF) {
            for (std::size_t k = i; k < i + 16; ++k) out[k] = table[bytes[k]];
            continue;
        }
        for (; others != 0; others &= others - 1) {
            const std::size_t k = i + static_cast<std::size_t>(std::countr_zero(others));
            out[k] = table[bytes[k]];
        }
    }
#endif
    for (; i < count; ++i) out[i] = table[bytes[i]];
}

Text bytesToText(const std::uint8_t* bytes, std::size_t count, std::uint32_t page) {
    if (const char16_t* const table = singleByteTable(page)) {
        Text result;
        result.reserve(count);
        // Through a small buffer, which stays in the cache: the text itself is written only once.
        std::array<char16_t, 2048> part;
        while (count > 0) {
            const std::size_t length = std::min(count, part.size());
            widenBytes(bytes, length, table, part.data());
            result.append(part.data(), length);
            bytes += length;
            count -= length;
        }
        return result;
    }
    Text result = convertToText(converterOf(indexOf(page)), bytes, count);
    if (page == 932) std::transform(result.begin(), result.end(), result.begin(), uncircled);
    return result;
}

Bytes textToBytes(TextView s, std::uint32_t page) {
    std::size_t index = indexOf(page);
    if (index == kPageCount) index = indexOf(kWestern);
    if (UConverter* const converter = converterOf(index)) {
        if (page != 932) return convertToBytes(converter, s);
        Text text(s);
        std::transform(text.begin(), text.end(), text.begin(), circled);
        return convertToBytes(converter, text);
    }
    const auto narrow =
        kPages[index].page == kWestern ? internal::narrowLatin : internal::narrowAscii;
    const ReverseTable& reverse = reverseOf(index);
    Bytes result(s.size());
    for (std::size_t i = 0; i < s.size();) {
        i += narrow(s.data() + i, s.size() - i, result.data() + i);
        // One by one until ASCII comes in pairs: in a text of another script, blanks stand alone.
        for (; i < s.size(); ++i) {
            if (s[i] < 0x80 && i + 1 < s.size() && s[i + 1] < 0x80) break;
            const std::uint8_t byte = reverse.byteOf(s[i]);
            result[i] = byte != 0 || s[i] == 0 ? byte : std::uint8_t{'?'};
        }
    }
    return result;
}

}  // namespace platform
