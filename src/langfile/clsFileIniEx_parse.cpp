#include "file/ufu_text.h"
#include "langfile/clsFileIniEx.h"
#include "langfile/clsFileIniEx_entries.h"
#include "langfile/scanText.h"
#include "platform/base/memory.h"

namespace {

// What ends a line of the whole file: the first of CR LF, LF and CR that occurs in it.
struct LineEnd {
    TextView separator;
    bool found;
};

LineEnd lineEndOf(TextView text) {
    for (const TextView separator : {TextView(u"\r\n"), TextView(u"\n"), TextView(u"\r")}) {
        if (containsText(text, separator)) return {separator, true};
    }
    return {u"\r\n", false};
}

}  // namespace

// Turns lines into records, one after the other; the rows are linked up afterwards.
class clsFileIniEx::LineReader {
public:
    explicit LineReader(clsFileIniEx& document) : m_doc(document) {}

    // keyEnd: where the first separator of the line stands, or npos.
    void line(TextView raw, std::size_t keyEnd) {
        if (!m_doc.m_sCommentChar.empty() && pvTrim(raw).starts_with(m_doc.m_sCommentChar)) {
            m_doc.pvAddPlainRow(m_head, raw);
        } else if (keyEnd != TextView::npos && keyEnd > 0) {
            const TextView key = raw.substr(0, keyEnd);
            m_doc.m_records.push_back({raw.data(), static_cast<std::uint32_t>(raw.size()),
                                       static_cast<std::uint32_t>(keyEnd), m_head,
                                       upperHalf(hashFolded(pvTrim(key)))});
            ++m_keyRows;
        } else if (!head(pvTrim(raw))) {
            m_doc.pvAddPlainRow(m_head, raw);
        }
    }
    [[nodiscard]] std::size_t keyRows() const { return m_keyRows; }

private:
    bool head(TextView trimmed) {
        if (trimmed.empty() || trimmed.front() != u'[') return false;
        const std::size_t close = trimmed.find(u']');
        if (close == TextView::npos || close < 2) return false;
        const TextView name = trimmed.substr(1, close - 1);
        if (pvTrim(name).empty()) return false;  // names no section: kept as it is
        m_head = static_cast<std::uint32_t>(m_doc.m_heads.size());
        m_doc.addHead(name);
        return true;
    }

    clsFileIniEx& m_doc;
    std::uint32_t m_head = kRoot;
    std::size_t m_keyRows = 0;
};

bool clsFileIniEx::Load(TextView sFile) {
    m_sFile = sFile;
    forget();
    try {
        if (ufu_FileLen(m_sFile) > kLargestFile) return false;
        Text text;
        if (!ufu_TextFileToString(m_sFile, text)) return false;
        pvParseText(std::move(text));
        return true;
    } catch (const std::exception&) {
        forget();
        return false;
    }
}

bool clsFileIniEx::LoadFromString(TextView s) {
    try {
        Text text(s);  // first, since s may be one of the texts that go
        m_sFile.clear();
        pvParseText(std::move(text));
        return true;
    } catch (const std::exception&) {
        m_sFile.clear();
        forget();
        return false;
    }
}

void clsFileIniEx::pvParseText(Text sText) {
    startRows();
    const LineEnd end = lineEndOf(sText);
    if (!end.found) sText += end.separator;
    m_text = std::make_shared<const Text>(std::move(sText));
    const TextView text = *m_text;

    // Address space only: a page is paid for when the first record comes to it.
    m_records.reserve(text.size() / 4 + 2);
    platform::adviseLargePages(m_records.data(), text.size() / 48 * sizeof(Record));

    const char16_t lastOfEnd = end.separator.back();
    const bool twoUnits = end.separator.size() == 2;
    LineReader reader(*this);
    std::size_t begin = 0;
    std::size_t keyEnd = TextView::npos;
    forEachUnit(text, lastOfEnd, m_cSeparator, [&](std::size_t at) {
        if (text[at] == lastOfEnd &&
            (!twoUnits || (at > begin && text[at - 1] == end.separator[0]))) {
            const std::size_t length = at + 1 - end.separator.size() - begin;
            reader.line(text.substr(begin, length), keyEnd);
            begin = at + 1;
            keyEnd = TextView::npos;
        } else if (text[at] == m_cSeparator && keyEnd == TextView::npos) {
            keyEnd = at - begin;
        }
        return true;
    });
    reader.line(text.substr(begin), keyEnd);

    m_keyTable.reserve(reader.keyRows());
    linkParsedRows();
}

// A plain row still lacks its place in the section; its `next` is not looked at.
void clsFileIniEx::pvAddPlainRow(std::uint32_t head, TextView sLine) {
    m_records.push_back({sLine.data(), static_cast<std::uint32_t>(sLine.size()), kNoKey, head, 0});
}

// Links the records into their sections, in order. `next` holds a key row's hash until then. A key
// that is there already takes over the later line at the place of the first.
void clsFileIniEx::linkParsedRows() {
    constexpr std::size_t kAhead = 16;  // far enough for the slot to have come from memory
    const auto tableHash = [this](const Record& record) {
        return hashInSection(m_heads[record.head].hash, record.next);
    };
    for (std::uint32_t i = 0; i < m_records.size(); ++i) {
        if (i + kAhead < m_records.size() && m_records[i + kAhead].keyLength != kNoKey) {
            m_keyTable.prefetch(tableHash(m_records[i + kAhead]));
        }
        const Record record = m_records[i];
        const std::uint32_t section = sectionOf(record.head);
        if (record.keyLength != kNoKey) {
            // Few have to look at the key itself, which is no longer in the cache.
            const auto isSame = [&](std::uint32_t entry) {
                return isKeyOf(section, pvTrim(keyOf(record)))(entry);
            };
            const std::uint32_t there = m_keyTable.insert(tableHash(record), i, isSame);
            if (there != kNone) {
                const std::uint32_t next = m_records[there].next;
                m_records[there] = record;
                m_records[there].next = next;
                continue;
            }
        }
        append(section, i);
    }
}
