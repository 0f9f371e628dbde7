// langfile/clsFileIniEx.h: one language file in memory.
//
// An ordered list of rows that keeps every line of the file, so that a file can be read, changed in
// a few keys and written back with its comments, blank lines and unknown lines in place. Section
// names and keys match without regard to case and to blanks and tabs at their ends.
#pragma once
#include "langfile/KeyTable.h"
#include "langfile/clsFileIniEx_Row.h"
#include "langfile/foldedText.h"
#include "platform/base/TextArena.h"

#include <memory>
#include <optional>
#include <vector>

class clsFileIniEx {
public:
    static constexpr std::int64_t kLargestFile =
        5 * 1024 * 1024;  // bytes; exactly that is accepted

    // Replaces what the document holds by the file's rows. False when the file is missing,
    // unreadable or longer than kLargestFile; nothing is loaded then.
    [[nodiscard]] bool Load(TextView sFile);
    // The same with a text in place of a file; IniFile becomes empty.
    [[nodiscard]] bool LoadFromString(TextView s);

    // Path of the document.
    [[nodiscard]] const Text& IniFile() const { return m_sFile; }
    void IniFile(Text sFile) { m_sFile = std::move(sFile); }

    // Whether blanks and tabs at the ends of keys and values stay when they are read. Starts as
    // false.
    [[nodiscard]] bool AllowTabs() const { return m_bAllowTabs; }
    void AllowTabs(bool bAllowTabs) { m_bAllowTabs = bAllowTabs; }
    // Prefix of a comment line; empty, as at the start, means that no line is one by its prefix.
    [[nodiscard]] const Text& CommentChar() const { return m_sCommentChar; }
    void CommentChar(Text sCommentChar) { m_sCommentChar = std::move(sCommentChar); }
    // The separator of key and value, "=" at the start. Set it before loading.
    [[nodiscard]] char16_t KeyValueSepChar() const { return m_cSeparator; }
    void KeyValueSepChar(char16_t cSeparator) { m_cSeparator = cSeparator; }

    // The value of a key, cleaned (without blanks and tabs at its ends, unless AllowTabs), or
    // sDefault. The empty section name addresses the rows before the first section; one of blanks
    // finds nothing. The view holds until the document changes. Raises "Please load the file
    // first!" with nothing loaded.
    [[nodiscard]] TextView GetString(TextView sAppName, TextView sKeyName,
                                     TextView sDefault = {}) const;
    class InOrder;  // the same for many keys, see below
    // True exactly when the value, trimmed, is "1". Raises as GetString.
    [[nodiscard]] bool GetBool(TextView sAppName, TextView sKeyName, bool bDefault = false) const;

    // The empty name, which stands for the rows before any section, then the sections in file
    // order, spelled as first seen. Raises as GetString. The views hold until the document changes.
    void GetSectionNames(std::vector<TextView>& vRows) const;
    // The whole lines of the section's key rows, in order; none for an unknown section, and those
    // before the first section for a name of blanks, too. A line that holds the separator of packed
    // lists is split there. Raises as GetString.
    void GetSectionRows(TextView sSecName, std::vector<TextView>& vRows) const;
    // Key and value of element idx, counted from 0, cleaned. A line without separator gives the
    // whole line for both.
    [[nodiscard]] TextView GetSectionRowKey(const std::vector<TextView>& vRows,
                                            std::size_t idx) const;
    [[nodiscard]] TextView GetSectionRowValue(const std::vector<TextView>& vRows,
                                              std::size_t idx) const;

    // Puts a key into a section, name, key and value cleaned. A row that exists keeps its place and
    // is rewritten as key, separator, value; a new one goes to the end of its section, a new
    // section to the end of the document, a root key in front of the first section.
    void AddString(TextView sAppName, TextView sKeyName, TextView sKeyVal);
    void AddBool(TextView sAppName, TextView sKeyName, bool bKeyVal);

    // Both give false when there is nothing to remove, also with nothing loaded.
    bool RemoveSection(TextView sSection);
    bool RemoveRowKeyVal(TextView sAppName, TextView sKeyName);

    // Writes the document to sFile, or to IniFile when sFile is blank; sFile becomes IniFile. With
    // bUpdate and a file there, the file is read again and only the keys of this document are
    // changed in it; a file that cannot be read makes it false and is left alone. A key with an
    // empty value is left out unless bSaveEmptyKeyVal. The text decides the encoding: ANSI on code
    // page 1252 with every unit below 256, else UTF-16. False when the file could not be written;
    // what stood in it is then put back, if that could be read (file/FileBytes.h). Raises "I need a
    // file!" with no file known.
    [[nodiscard]] bool Save(TextView sFile = {}, TextView sLineSep = u"\r\n", bool bUpdate = true,
                            bool bSaveEmptyKeyVal = true);

    // The text that Save without bUpdate writes.
    [[nodiscard]] Text toText(TextView sLineSep, bool bSaveEmptyKeyVal) const;

    // The text of the file as it was read. Views of lines that were not edited lie in it and stay
    // good for who keeps it. Null with nothing loaded.
    [[nodiscard]] const std::shared_ptr<const Text>& fileText() const { return m_text; }

    // Every stored row in order: root rows, then each section row followed by its rows.
    template <class Visit> void forEachRow(Visit visit) const;

private:
    static constexpr std::uint32_t kNone = KeyTable::kNone;
    static constexpr std::uint32_t kRoot = 0;       // number of the section of the root rows
    static constexpr std::uint32_t kNoKey = kNone;  // m_keyLength of a plain row

    // What a line is, in 24 bytes: there is one for each line of the file.
    struct Record {
        const char16_t* line;      // into m_text or m_edited
        std::uint32_t lineLength;  // units
        std::uint32_t keyLength;   // the value begins behind key and separator; kNoKey: a plain row
        std::uint32_t head;        // the spelling of the section that the row came under
        std::uint32_t next;        // the next row of the section
    };
    // One spelling of a section's name: `[Menu]` and `[menu]` are two heads of one section.
    struct Head {
        TextView name;  // with "[" in front of it and "]" behind it in memory
        std::uint64_t hash = 0;
        std::uint32_t section = kNone;  // until the first row comes
    };
    struct Section {
        TextView name;           // as first seen
        TextView trimmed;        // the same without blanks and tabs at its ends
        std::uint64_t hash = 0;  // of the lower-cased trimmed name
        std::uint32_t head = 0;  // the head that made it
        std::uint32_t first = kNone, last = kNone;
        bool removed = false;
    };

    void pvParseText(Text sText);
    void pvAddPlainRow(std::uint32_t head, TextView sLine);
    void pvAddKeyRow(TextView sSection, TextView sKey, TextView sValue);
    [[nodiscard]] std::uint32_t pvFindSection(TextView sSection) const;
    [[nodiscard]] std::uint32_t pvFindRow(TextView sSection, TextView sKey) const;
    [[nodiscard]] static TextView pvTrim(TextView s) { return trimBlanksAndTabs(s); }
    void pvCheckLoaded() const;
    [[nodiscard]] bool pvSave(TextView sLineSep, bool bSaveEmptyKeyVal) const;
    template <class Put> void forEachPart(TextView sLineSep, bool bSaveEmptyKeyVal, Put put) const;
    [[nodiscard]] std::size_t textLength(TextView sLineSep, bool bSaveEmptyKeyVal) const;
    // The bytes of toText on the ANSI code page, without the text; nothing when it is no ANSI text.
    [[nodiscard]] std::optional<Bytes> toAnsi(TextView sLineSep, bool bSaveEmptyKeyVal) const;

    class LineReader;

    void forget();
    void startRows();
    void addHead(TextView sName);
    void linkParsedRows();
    void append(std::uint32_t section, std::uint32_t record);
    void removeRecord(std::uint32_t section, std::uint32_t before, std::uint32_t record);
    void dropSection(std::uint32_t section);
    void mergeInto(clsFileIniEx& oTarget) const;
    [[nodiscard]] TextView cleaned(TextView s) const { return m_bAllowTabs ? s : pvTrim(s); }
    [[nodiscard]] std::uint32_t headNamed(TextView sSection);
    [[nodiscard]] std::uint32_t sectionOf(std::uint32_t head);
    void setLine(Record& row, TextView sKey, TextView sValue);
    [[nodiscard]] std::uint64_t hashOf(std::uint32_t section, TextView sTrimmedKey) const;
    // The row or kNone. `next`, or a key row soon behind it, is where it stands for one who goes by
    // the order of the file: that is looked at first. kNone: nowhere in particular.
    [[nodiscard]] std::uint32_t findRow(std::uint32_t section, TextView sTrimmedKey,
                                        std::uint32_t next) const;
    // Compares an entry of m_keyTable.
    [[nodiscard]] auto isKeyOf(std::uint32_t section, TextView sTrimmedKey) const;
    [[nodiscard]] auto isSectionNamed(TextView sTrimmedName) const;

    static TextView textOf(const Record& record) { return {record.line, record.lineLength}; }
    static TextView keyOf(const Record& record) {
        return record.keyLength == kNoKey ? TextView() : TextView(record.line, record.keyLength);
    }
    // Only such a row counts as a key row; a key of no characters can come from AddString alone.
    static bool isKeyRow(const Record& record) { return !keyOf(record).empty(); }
    // The brackets stand around the name wherever a head keeps it.
    static TextView lineOf(const Section& section) {
        return {section.name.data() - 1, section.name.size() + 2};
    }
    static TextView valueOf(const Record& record) {
        return record.keyLength == kNoKey ? TextView()
                                          : textOf(record).substr(record.keyLength + 1);
    }

    Text m_sFile;
    bool m_bAllowTabs = false;
    Text m_sCommentChar;
    char16_t m_cSeparator = u'=';

    std::uint32_t m_recentHead = kRoot;  // of the last row that was added by section name
    std::uint32_t m_recentRow = kNone;   // the last row that was added
    bool m_bLoaded = false;
    std::shared_ptr<const Text> m_text;  // of the file; the records of its lines point into it
    platform::TextArena m_edited;        // lines and names that came later
    std::vector<Record> m_records;       // in the order in which they came
    std::vector<Head> m_heads;           // head kRoot is that of the root rows
    std::vector<Section> m_sections;     // section kRoot holds the root rows
    KeyTable m_sectionTable;             // by lower-cased trimmed name
    KeyTable m_keyTable;                 // by section and lower-cased trimmed key
};

// GetString for keys that come in the order of another file of the same program: as their rows
// mostly follow each other here, too, most are found without a look into the table.
class clsFileIniEx::InOrder {
public:
    // The document must live longer and not change.
    explicit InOrder(const clsFileIniEx& document) : m_document(document) {}
    // The section of the keys from now on; for the name see GetString.
    void section(TextView sAppName);
    [[nodiscard]] TextView GetString(TextView sKeyName, TextView sDefault = {});

private:
    const clsFileIniEx& m_document;
    std::uint32_t m_section = kRoot;
    std::uint32_t m_next = kNone;  // the row behind the one that was found last
};

template <class Visit> void clsFileIniEx::forEachRow(Visit visit) const {
    for (std::uint32_t s = 0; s < m_sections.size(); ++s) {
        const Section& section = m_sections[s];
        if (section.removed) continue;
        if (s != kRoot) visit(clsFileIniEx_Row{lineOf(section), RowList{s}, {}, {}, section.name});
        for (std::uint32_t r = section.first; r != kNone; r = m_records[r].next) {
            const Record& row = m_records[r];
            visit(clsFileIniEx_Row{
                textOf(row), {}, keyOf(row), valueOf(row), m_heads[row.head].name});
        }
    }
}
