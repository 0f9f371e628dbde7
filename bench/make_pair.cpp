// make_pair SHAPE FOLDER: writes main.lng, trans.lng and edits.jsonl (1,000 edits) into FOLDER.
//
//   small        2,000 keys, plain bytes of code page 1252
//   large        as many keys as fit below 5,242,880 bytes a file
//   large-utf8   the same with a Russian translation, both in UTF-8 with mark
//   large-utf16  the same in UTF-16 with mark
//   dense        keys of four letters with values of one, as many as fit
//
// The same shape gives the same bytes everywhere.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

constexpr std::size_t kMostBytes = 5242880;

constexpr const char16_t* kEnglish[] = {
    u"album",    u"photo",  u"camera",   u"import",   u"export",   u"folder",    u"the",
    u"a",        u"of",     u"to",       u"in",       u"and",      u"with",      u"selected",
    u"picture",  u"rotate", u"left",     u"right",    u"size",     u"colour",    u"show",
    u"hide",     u"all",    u"none",     u"open",     u"save",     u"close",     u"delete",
    u"rename",   u"copy",   u"cannot",   u"find",     u"please",   u"choose",    u"another",
    u"name",     u"exists", u"already",  u"replace",  u"disk",     u"full",      u"free",
    u"space",    u"search", u"keywords", u"rating",   u"date",     u"place",     u"print",
    u"paper",    u"margin", u"slide",    u"interval", u"seconds",  u"language",  u"restart",
    u"version",  u"update", u"about",    u"backup",   u"progress", u"thumbnail", u"quality",
    u"watermark"};
constexpr const char16_t* kDutch[] = {u"album",
                                      u"foto",
                                      u"camera",
                                      u"importeren",
                                      u"exporteren",
                                      u"map",
                                      u"de",
                                      u"een",
                                      u"van",
                                      u"naar",
                                      u"in",
                                      u"en",
                                      u"met",
                                      u"gekozen",
                                      u"afbeelding",
                                      u"draaien",
                                      u"links",
                                      u"rechts",
                                      u"grootte",
                                      u"kleur",
                                      u"tonen",
                                      u"verbergen",
                                      u"alle",
                                      u"geen",
                                      u"openen",
                                      u"opslaan",
                                      u"sluiten",
                                      u"verwijderen",
                                      u"hernoemen",
                                      u"kopi\u00ebren",
                                      u"kan niet",
                                      u"zoeken",
                                      u"kies",
                                      u"een andere",
                                      u"naam",
                                      u"bestaat",
                                      u"al",
                                      u"vervangen",
                                      u"schijf",
                                      u"vol",
                                      u"vrij",
                                      u"ruimte",
                                      u"co\u00f6rdinaat",
                                      u"waardering",
                                      u"datum",
                                      u"plaats",
                                      u"afdrukken",
                                      u"papier",
                                      u"marge",
                                      u"dia",
                                      u"interval",
                                      u"seconden",
                                      u"taal",
                                      u"ge\u00efmporteerd",
                                      u"versie",
                                      u"bijwerken",
                                      u"over",
                                      u"reserve",
                                      u"voortgang",
                                      u"e\u00e9n"};
constexpr const char16_t* kRussian[] = {
    u"альбом",     u"фото",     u"камера",  u"импорт",    u"экспорт", u"папка",    u"и",
    u"в",          u"на",       u"для",     u"с",         u"не",      u"выбрать",  u"рисунок",
    u"поворот",    u"влево",    u"вправо",  u"размер",    u"цвет",    u"показать", u"скрыть",
    u"все",        u"нет",      u"открыть", u"сохранить", u"закрыть", u"удалить",  u"имя",
    u"копировать", u"нельзя",   u"найти",   u"другое",    u"уже",     u"заменить", u"диск",
    u"заполнен",   u"свободно", u"место",   u"поиск",     u"слово",   u"оценка",   u"дата",
    u"печать",     u"бумага",   u"поле",    u"слайд",     u"секунды", u"язык"};
constexpr const char16_t* kAreas[] = {u"Menu",   u"Toolbar", u"Import",  u"Export", u"Search",
                                      u"Viewer", u"Options", u"Message", u"Hint",   u"Status"};

enum class Encoding { ansi, utf8, utf16 };

struct Shape {
    std::string_view name;
    Encoding encoding = Encoding::ansi;
    bool russian = false;
    bool dense = false;
    std::size_t mostKeys = SIZE_MAX;
};
constexpr Shape kShapes[] = {
    {"small", Encoding::ansi, false, false, 2000}, {"large"},
    {"large-utf8", Encoding::utf8, true},          {"large-utf16", Encoding::utf16, true},
    {"dense", Encoding::ansi, false, true},
};

// Bytes of a text without surrogates, appended.
void append(std::string& bytes, std::u16string_view text, Encoding encoding) {
    for (const char16_t c : text) {
        if (encoding == Encoding::utf16) {
            bytes += static_cast<char>(c & 0xFF);
            bytes += static_cast<char>(c >> 8);
        } else if (c < 0x80 || encoding == Encoding::ansi) {
            bytes += static_cast<char>(c);
        } else if (c < 0x800) {
            bytes += static_cast<char>(0xC0 | c >> 6);
            bytes += static_cast<char>(0x80 | (c & 0x3F));
        } else {
            bytes += static_cast<char>(0xE0 | c >> 12);
            bytes += static_cast<char>(0x80 | (c >> 6 & 0x3F));
            bytes += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
}

class File {
public:
    explicit File(Encoding encoding) : m_encoding(encoding) {
        if (encoding == Encoding::utf8) m_bytes = "\xEF\xBB\xBF";
        if (encoding == Encoding::utf16) m_bytes = "\xFF\xFE";
    }
    void line(std::u16string_view text) {
        append(m_bytes, std::u16string(text) + u"\r\n", m_encoding);
    }
    [[nodiscard]] std::size_t size() const { return m_bytes.size(); }
    void cut(std::size_t size) { m_bytes.resize(size); }
    void write(const std::string& path) const {
        std::ofstream out(path, std::ios::binary);
        if (!(out << m_bytes).flush()) throw std::runtime_error("cannot write " + path);
    }

private:
    Encoding m_encoding;
    std::string m_bytes;
};

std::u16string number(std::size_t n) {
    const std::string digits = std::to_string(n);
    return {digits.begin(), digits.end()};
}

class Maker {
public:
    explicit Maker(const Shape& shape)
        : m_shape(shape), m_main(shape.encoding), m_trans(shape.encoding) {}

    void make() {
        const std::size_t keysOfSection = m_shape.dense ? 10000 : 40;
        for (std::size_t i = 0; i < m_shape.mostKeys; ++i) {
            const std::size_t mainSize = m_main.size();
            const std::size_t transSize = m_trans.size();
            if (i % keysOfSection == 0) head(i / keysOfSection);
            m_shape.dense ? denseKey(i) : key(i);
            if (m_main.size() > kMostBytes || m_trans.size() > kMostBytes) {
                m_main.cut(mainSize);
                m_trans.cut(transSize);
                break;
            }
            m_keys = i + 1;
        }
    }

    void write(const std::string& folder) const {
        m_main.write(folder + "/main.lng");
        m_trans.write(folder + "/trans.lng");
        std::string edits;
        const std::size_t step = m_keys / 1000;
        const std::size_t keysOfSection = m_shape.dense ? 10000 : 40;
        for (std::size_t n = 0; n < 1000; ++n) {
            const std::size_t i = n * step;
            edits += "{\"section\":\"";
            append(edits, sectionName(i / keysOfSection), Encoding::utf8);
            edits += "\",\"key\":\"";
            append(edits, m_shape.dense ? denseName(i) : keyName(i), Encoding::utf8);
            edits += "\",\"translation\":\"edit " + std::to_string(n) + "\"}\n";
        }
        std::ofstream out(folder + "/edits.jsonl", std::ios::binary);
        if (!(out << edits).flush()) throw std::runtime_error("cannot write the edits");
    }

private:
    std::size_t below(std::size_t limit) { return m_random() % limit; }

    template <std::size_t N>
    std::u16string words(const char16_t* const (&list)[N], std::size_t most) {
        std::u16string text;
        for (std::size_t n = 1 + below(most); n > 0; --n) {
            if (!text.empty()) text += u' ';
            text += list[below(N)];
        }
        return text;
    }

    static std::u16string sectionName(std::size_t section) {
        return std::u16string(kAreas[section % std::size(kAreas)]) + u"." + number(section);
    }

    // Names need no random numbers, so that the edits can name keys again.
    static std::u16string keyName(std::size_t i) {
        std::u16string name(kEnglish[i * 7 % std::size(kEnglish)]);
        return name + u"_" + kEnglish[i * 11 / 3 % std::size(kEnglish)] + u"_" + number(i);
    }

    static std::u16string denseName(std::size_t i) {
        constexpr std::u16string_view kDigits = u"abcdefghijklmnopqrstuvwxyz0123456789";
        std::u16string name(4, u'a');
        for (auto it = name.rbegin(); it != name.rend(); ++it, i /= kDigits.size()) {
            *it = kDigits[i % kDigits.size()];
        }
        return name;
    }

    void head(std::size_t section) {
        const std::u16string name = sectionName(section);
        if (section != 0) {
            m_main.line(u"");
            m_trans.line(u"");
        }
        m_main.line(u"[" + name + u"]");
        m_trans.line(u"[" + name + u"]");
        if (below(4) == 0) m_main.line(u"; " + words(kEnglish, 8));
        if (below(8) == 0) m_trans.line(u"; checked");
    }

    void denseKey(std::size_t i) {
        const std::u16string name = denseName(i);
        m_main.line(name + u"=x");
        m_trans.line(name + u"=" + kEnglish[below(std::size(kEnglish))][0]);
    }

    // One row in twelve repeats an earlier text, one in ten has no translation, one in twenty the
    // default.
    void key(std::size_t i) {
        const std::u16string name = keyName(i);
        std::u16string text = words(kEnglish, 7);
        if (below(12) == 0 && !m_earlier.empty()) text = m_earlier;
        if (below(40) == 0) m_earlier = text;
        const std::size_t kind = below(20);
        m_main.line(name + u"=" + text);
        if (kind < 2) return;
        if (kind == 2) {
            m_trans.line(name + u"=" + text);
        } else if (m_shape.russian) {
            m_trans.line(name + u"=" + words(kRussian, 6));
        } else {
            m_trans.line(name + u"=" + words(kDutch, 7));
        }
    }

    const Shape& m_shape;
    File m_main;
    File m_trans;
    std::size_t m_keys = 0;
    std::u16string m_earlier;
    std::mt19937_64 m_random{20240229};
};

}  // namespace

int main(int argc, char** argv) {
    for (const Shape& shape : kShapes) {
        if (argc != 3 || shape.name != argv[1]) continue;
        try {
            Maker maker(shape);
            maker.make();
            maker.write(argv[2]);
            return EXIT_SUCCESS;
        } catch (const std::exception& failure) {
            std::fprintf(stderr, "make_pair: %s\n", failure.what());
            return EXIT_FAILURE;
        }
    }
    std::fputs("usage: make_pair small|large|large-utf8|large-utf16|dense FOLDER\n", stderr);
    return 2;
}
