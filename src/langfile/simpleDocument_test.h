// langfile/simpleDocument_test.h: a second language file document, as plain as can be, to compare
// with.
//
// Lists of strings, searched from the front. Slow and obvious on purpose: it shares no code with
// the document of the product but the lower-case mapping of a single unit.
#pragma once
#include "platform/base/casemap.h"

#include <optional>
#include <string>
#include <vector>

namespace simple {

inline Text trimmed(Text s, bool tabs = true) {
    const auto blank = [&](char16_t c) { return c == u' ' || (tabs && c == u'\t'); };
    while (!s.empty() && blank(s.front())) s.erase(0, 1);
    while (!s.empty() && blank(s.back())) s.pop_back();
    return s;
}

inline Text folded(const Text& s) {
    Text lower = trimmed(s);
    for (char16_t& c : lower) c = platform::lowerUnit(c);
    return lower;
}

struct Row {
    Text line;
    std::optional<Text> key;  // none: a plain row
    Text value;
    Text section;  // as spelled where the row came from
};

struct Section {
    Text name;
    std::vector<Row> rows;
};

class Document {
public:
    explicit Document(char16_t separator = u'=') : m_separator(separator) { sections.resize(1); }

    void parse(const Text& text) {
        Text end = u"\r\n";
        Text all = text;
        if (text.find(u"\r\n") == Text::npos) {
            end = text.find(u'\n') != Text::npos ? u"\n" : u"\r";
            if (text.find(end) == Text::npos) {
                end = u"\r\n";
                all += end;
            }
        }
        Text current;
        for (std::size_t at = 0;;) {
            const std::size_t stop = all.find(end, at);
            const Text line = all.substr(at, stop == Text::npos ? Text::npos : stop - at);
            const Text bare = trimmed(line);
            const std::size_t sep = line.find(m_separator);
            const std::size_t close = bare.find(u']');
            if (sep != Text::npos && sep > 0) {
                addKey(current, line.substr(0, sep), line.substr(sep + 1), line);
            } else if (!bare.empty() && bare[0] == u'[' && close != Text::npos && close >= 2 &&
                       !trimmed(bare.substr(1, close - 1)).empty()) {
                current = bare.substr(1, close - 1);
            } else {
                sectionFor(current).rows.push_back({line, std::nullopt, {}, current});
            }
            if (stop == Text::npos) return;
            at = stop + end.size();
        }
    }

    Row* find(const Text& section, const Text& key) {
        for (Section& s : sections) {
            if (folded(s.name) != folded(section)) continue;
            for (Row& r : s.rows) {
                if (r.key && folded(*r.key) == folded(key)) return &r;
            }
        }
        return nullptr;
    }

    void addKey(const Text& section, const Text& key, const Text& value, const Text& line) {
        Row row{line, key, value, section};
        if (Row* there = find(section, key)) {
            *there = row;
        } else {
            sectionFor(section).rows.push_back(row);
        }
    }

    void addString(const Text& section, const Text& key, const Text& value) {
        const Text k = trimmed(key);
        const Text v = trimmed(value);
        addKey(trimmed(section), k, v, k + m_separator + v);
    }

    bool removeSection(const Text& section) {
        for (std::size_t s = 1; s < sections.size(); ++s) {
            if (folded(sections[s].name) != folded(section)) continue;
            sections.erase(sections.begin() + static_cast<std::ptrdiff_t>(s));
            return true;
        }
        return false;
    }

    bool removeKey(const Text& section, const Text& key) {
        for (std::size_t s = section.empty() ? 0 : 1; s < sections.size(); ++s) {
            if (folded(sections[s].name) != folded(section)) continue;
            auto& rows = sections[s].rows;
            for (std::size_t r = 0; r < rows.size(); ++r) {
                if (folded(rows[r].key.value_or(Text())) != folded(key)) continue;
                rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(r));
                return true;
            }
            break;
        }
        // A section is a row without a key at the top level.
        const bool takesSection = section.empty() && folded(key).empty() && sections.size() > 1;
        if (takesSection) sections.erase(sections.begin() + 1);
        return takesSection;
    }

    void mergeInto(Document& target) const {
        for (const Section& s : sections) {
            for (const Row& r : s.rows) {
                if (r.key && !r.key->empty()) target.addString(r.section, *r.key, r.value);
            }
        }
    }

    [[nodiscard]] Text written(const Text& end, bool keepEmpty) const {
        Text all;
        bool first = true;
        for (const Section& s : sections) {
            if (!first) all += u'[' + s.name + u']' + end;
            first = false;
            for (const Row& r : s.rows) {
                const bool left = !keepEmpty && r.key && !r.key->empty() && r.value.empty();
                if (!left) all += r.line + end;
            }
        }
        if (!end.empty() && all.ends_with(end)) all.resize(all.size() - end.size());
        return all;
    }

    std::vector<Section> sections;  // the first holds the rows before any section

private:
    Section& sectionFor(const Text& name) {
        for (Section& s : sections) {
            if (folded(s.name) == folded(name)) return s;
        }
        sections.push_back({name, {}});
        return sections.back();
    }

    char16_t m_separator;
};

}  // namespace simple
