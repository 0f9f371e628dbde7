#include "langfile/clsFileIniEx.h"

#include "langfile/documentDump_test.h"
#include "langfile/simpleDocument_test.h"
#include "platform/base/codepages.h"
#include "platform/base/failure.h"
#include "platform/base/files.h"
#include "platform/base/testhooks.h"
#include "support/TempDir.h"

#include <csignal>
#include <gtest/gtest.h>
#include <random>
#include <sys/resource.h>

namespace {

clsFileIniEx parsed(TextView text) {
    clsFileIniEx document;
    EXPECT_TRUE(document.LoadFromString(text));
    return document;
}

std::string joined(const std::vector<TextView>& parts) {
    std::string all;
    for (const TextView part : parts) all += "<" + toUtf8(part) + ">";
    return all;
}

std::string failureOf(const std::function<void()>& operation) {
    try {
        operation();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, kOwnError);
        return toUtf8(failure.message);
    }
    return "no failure";
}

const struct {
    Text text;
    std::string rows;
} kParse[] = {
    {u"", "plain[] plain[]"},
    {u"\r\n", "plain[] plain[]"},
    {u"Title = My program", "key[Title ]=[ My program] plain[]"},
    {u"Path=c:\\a=b\n", "key[Path]=[c:\\a=b] plain[]"},
    {u"; note\r\n; note=x\r\n=x\r\n#x", "plain[; note] key[; note]=[x] plain[=x] plain[#x]"},
    {u"=a=b\n", "plain[=a=b] plain[]"},
    {u"  [Main]  ; text\r\nA=1", "sec[Main]{key[A]=[1]}"},
    {u"[a=b]\r\n[a]=b\r\n[]\r\n[name\r\nx[A]\r\n[]]",
     "key[[a]=[b]] key[[a]]=[b] plain[[]] plain[[name] plain[x[A]] plain[[]]]"},
    {u"[A]\nk=1\n[B]\nk=2\n[a]\nk=3", "sec[A]{key[k]=[3]} sec[B]{key[k]=[2]}"},
    {u"Key=1\n KEY = 2\nq=", "key[ KEY ]=[ 2] key[q]=[]"},
    {u"a=1\n\n[A]\n\n[B]\nx", "key[a]=[1] plain[] sec[A]{plain[]} sec[B]{plain[x]}"},
    // A head without any row leaves no trace; one whose name is blank is a row like any other.
    {u"[A]", "sec[A]{plain[]}"},
    {u"[A]\r\n[B]", ""},
    {u"[A]\nx=1\n[ \t ]\ny=2", "sec[A]{key[x]=[1] plain[[ \t ]] key[y]=[2]}"},
    {u"[ A\t]\nx=1\n[a]\ny=2", "sec[ A\t]{key[x]=[1] key[y]=[2]}"},
    // With CR LF in the file a lone CR or LF is an ordinary character, as is CR in a file of LF.
    {u"a=1\rb\r\nc=2\nd", "key[a]=[1\rb] key[c]=[2\nd]"},
    {u"\r\n\nx=1", "plain[] key[\nx]=[1]"},
    {u"a=1\r\rb=2\r", "key[a]=[1] plain[] key[b]=[2] plain[]"},
    {u"a=1\nb\r", "key[a]=[1] plain[b\r]"},
    // Keys of blanks only are keys; they meet each other.
    {u" =1\n\t=2", "key[\t]=[2]"},
    {u"\u0130=1\ni=2\n\u00C4=3\n\u00E4=4\n\u03A3=5\n\u03C2=6",
     "key[i]=[2] key[\u00E4]=[4] key[\u03A3]=[5] key[\u03C2]=[6]"},
};

TEST(clsFileIniEx, ClassifiesLines) {
    for (const auto& c : kParse) EXPECT_EQ(dump(parsed(c.text)), c.rows) << toUtf8(c.text);
}

TEST(clsFileIniEx, ReadsByThePrefixOfCommentsAndTheSeparatorThatAreSet) {
    clsFileIniEx document;
    document.CommentChar(u"//");
    ASSERT_TRUE(document.LoadFromString(u" // a=1\nb=2\n//[C]"));
    EXPECT_EQ(dump(document), "plain[ // a=1] key[b]=[2] plain[//[C]]");

    document.KeyValueSepChar(u':');
    ASSERT_TRUE(document.LoadFromString(u"a:1=2\nb=3"));
    document.AddString(u"", u"c", u" 4 ");
    EXPECT_EQ(dump(document), "key[a]=[1=2] plain[b=3] key[c]=[4]");
    EXPECT_EQ(document.toText(u"\n", true), u"a:1=2\nb=3\nc:4");

    // A row that is added again gets the separator of now, its text the same or not.
    document.KeyValueSepChar(u'=');
    document.AddString(u"", u"a", u"1=2");
    document.AddString(u"", u"c", u"5");
    EXPECT_EQ(document.toText(u"\n", true), u"a=1=2\nb=3\nc=5");
}

TEST(clsFileIniEx, FindsValuesWithoutRegardToCaseAndEndBlanks) {
    clsFileIniEx document = parsed(u"Root = r \n[ Menu ]\nOpen=\t\u00D6ffnen \nFlag= 1 \nTwo=2");
    EXPECT_EQ(document.GetString(u"", u" root"), u"r");
    EXPECT_EQ(document.GetString(u"mENU", u"OPEN\t"), u"\u00D6ffnen");
    EXPECT_EQ(document.GetString(u"Menu", u"Close", u" d "), u" d ");
    EXPECT_EQ(document.GetString(u"None", u"Open", u"d"), u"d");
    EXPECT_EQ(document.GetString(u" ", u"root", u"d"), u"d");  // a name that no section has
    EXPECT_TRUE(document.GetBool(u"Menu", u"flag"));
    EXPECT_FALSE(document.GetBool(u"Menu", u"two", true));
    EXPECT_TRUE(document.GetBool(u"Menu", u"three", true));
    document.AllowTabs(true);
    EXPECT_EQ(document.GetString(u"Menu", u"Open"), u"\t\u00D6ffnen ");
    EXPECT_TRUE(document.GetBool(u"Menu", u"flag"));
}

TEST(clsFileIniEx, ListsSectionsAndTheLinesOfTheirKeys) {
    const clsFileIniEx document = parsed(u"r = 1\n; c\n[B]\nx\n k = v=w \n[A]\ny=2\n");
    std::vector<TextView> rows;
    document.GetSectionNames(rows);
    EXPECT_EQ(joined(rows), "<><B><A>");
    document.GetSectionRows(u" ", rows);
    EXPECT_EQ(joined(rows), "<r = 1>");
    document.GetSectionRows(u"b", rows);
    EXPECT_EQ(joined(rows), "< k = v=w >");
    EXPECT_EQ(document.GetSectionRowKey(rows, 0), u"k");
    EXPECT_EQ(document.GetSectionRowValue(rows, 0), u"v=w");
    document.GetSectionRows(u"unknown", rows);
    EXPECT_TRUE(rows.empty());
    rows = {u" no separator ", u"=x", u""};
    EXPECT_EQ(document.GetSectionRowKey(rows, 0), u"no separator");
    EXPECT_EQ(document.GetSectionRowValue(rows, 0), u"no separator");
    EXPECT_EQ(document.GetSectionRowKey(rows, 1), u"=x");
    EXPECT_EQ(document.GetSectionRowValue(rows, 2), u"");

    // A line that holds the separator of packed lists falls apart there.
    const clsFileIniEx packed = parsed(u"a=1\t\nb=2\t1234\t5-6*7-8\t4321\tc=3\n");
    packed.GetSectionRows(u"", rows);
    EXPECT_EQ(joined(rows), "<a=1\t><b=2><c=3>");
}

TEST(clsFileIniEx, NeedsALoadedDocumentForReading) {
    const clsFileIniEx empty;
    std::vector<TextView> rows;
    const std::string kWords = "Please load the file first!";
    EXPECT_EQ(failureOf([&] { (void)empty.GetString(u"", u"a"); }), kWords);
    EXPECT_EQ(failureOf([&] { (void)empty.GetBool(u"", u"a"); }), kWords);
    EXPECT_EQ(failureOf([&] { empty.GetSectionNames(rows); }), kWords);
    EXPECT_EQ(failureOf([&] { empty.GetSectionRows(u"", rows); }), kWords);
    clsFileIniEx document;
    EXPECT_FALSE(document.RemoveSection(u"A"));
    EXPECT_FALSE(document.RemoveRowKeyVal(u"", u"a"));
    document.AddString(u"", u"a", u"1");
    EXPECT_EQ(document.GetString(u"", u"a"), u"1");
}

const struct {
    Text text;
    Text section, key, value;
    std::string rows;
} kAdd[] = {
    {u"a = 1\nb=2", u"", u" A ", u" 1\t", "key[A]=[1] key[b]=[2]"},
    {u"a=1\n[S]\nb=2", u"", u"c", u"3", "key[a]=[1] key[c]=[3] sec[S]{key[b]=[2]}"},
    {u"a=1\n[S]\nb=2\n\n[T]\nx", u"s", u"c", u"3",
     "key[a]=[1] sec[S]{key[b]=[2] plain[] key[c]=[3]} sec[T]{plain[x]}"},
    {u"[S]\nb=2", u" New ", u"c", u"", "sec[S]{key[b]=[2]} sec[New]{key[c]=[]}"},
    {u"[S]\nb=2", u"s", u"B", u"x=y", "sec[S]{key[B]=[x=y]}"},
    // The separator within a key is the key's own affair until the file is read again.
    {u"x", u"", u"a=b", u"c", "plain[x] plain[] key[a=b]=[c]"},
    {u"x", u"", u"", u"c", "plain[x] plain[] plain[=c]"},
};

TEST(clsFileIniEx, AddsAndReplacesKeys) {
    for (const auto& c : kAdd) {
        clsFileIniEx document = parsed(c.text);
        document.AddString(c.section, c.key, c.value);
        EXPECT_EQ(dump(document), c.rows);
        EXPECT_EQ(document.GetString(c.section, c.key), simple::trimmed(c.value));
    }
    clsFileIniEx fresh;
    fresh.AddBool(u"S", u"yes", true);
    fresh.AddBool(u"S", u"no", false);
    EXPECT_EQ(dump(fresh), "sec[S]{key[yes]=[1] key[no]=[0]}");
}

TEST(clsFileIniEx, TakesTextsOfItsOwnAndTextsOfNothing) {
    clsFileIniEx document;
    document.AddString(u"S", u"value", TextView());
    document.AddString(u"S", TextView(), u"key");
    EXPECT_EQ(document.toText(u"|", true), u"[S]|value=|=key");
    ASSERT_TRUE(document.LoadFromString(u"[S]\nk=c=2"));
    document.AddString(u"S", u"l", document.GetString(u"S", u"k"));
    EXPECT_EQ(document.toText(u"|", true), u"[S]|k=c=2|l=c=2");
    ASSERT_TRUE(document.LoadFromString(document.GetString(u"S", u"l")));
    EXPECT_EQ(document.toText(u"|", true), u"c=2|");
}

TEST(clsFileIniEx, LooksAtTheBlanksOfANameOnce) {
    Text text = u"[a" + Text(2'000'000, u' ') + u"]\nx\n";
    for (int i = 0; i < 400'000; ++i) text += u"[A]\nx\n";
    const clsFileIniEx document = parsed(text);  // at every head, it would not end
    std::vector<TextView> names;
    document.GetSectionNames(names);
    EXPECT_EQ(names.size(), 2U);
}

TEST(clsFileIniEx, KeepsItsRowsWhenItIsMoved) {
    clsFileIniEx a = parsed(u"k=1");
    clsFileIniEx b = parsed(u"k=2");
    b.AddString(u"", u"l", u"3");
    std::swap(a, b);
    EXPECT_EQ(a.toText(u"|", true), u"k=2||l=3");
    EXPECT_EQ(b.toText(u"|", true), u"k=1|");
    EXPECT_EQ(a.GetString(u"", u"k"), u"2");
}

TEST(clsFileIniEx, RemovesKeysAndSections) {
    const Text text = u"r=1\n[A]\n; c\nx=1\ny=2\n[B]\nx=3";
    clsFileIniEx document = parsed(text);
    EXPECT_TRUE(document.RemoveRowKeyVal(u"a", u" X"));
    EXPECT_FALSE(document.RemoveRowKeyVal(u"a", u"x"));
    EXPECT_FALSE(document.RemoveRowKeyVal(u"C", u"x"));
    EXPECT_FALSE(document.RemoveRowKeyVal(u" ", u"r"));
    EXPECT_TRUE(document.RemoveRowKeyVal(u"", u"R"));
    EXPECT_EQ(dump(document), "sec[A]{plain[; c] key[y]=[2]} sec[B]{key[x]=[3]}");
    EXPECT_TRUE(document.RemoveRowKeyVal(u"B", u"x"));
    EXPECT_EQ(document.toText(u"|", true), u"[A]|; c|y=2|[B]");
    EXPECT_FALSE(document.RemoveSection(u" "));
    EXPECT_TRUE(document.RemoveSection(u" a"));
    EXPECT_FALSE(document.RemoveSection(u"A"));
    document.AddString(u"a", u"z", u"9");
    document.AddString(u"B", u"x", u"4");
    EXPECT_EQ(dump(document), "sec[B]{key[x]=[4]} sec[a]{key[z]=[9]}");
    EXPECT_TRUE(document.RemoveSection(u"a"));  // the last head's section, twice
    document.AddString(u"a", u"z", u"8");
    EXPECT_EQ(dump(document), "sec[B]{key[x]=[4]} sec[a]{key[z]=[8]}");

    // Where the row that was added last has gone, with the one behind it, neither is found again.
    clsFileIniEx emptied = parsed(u"x=1\ny=2\nz=3");
    emptied.AddString(u"", u"x", u"4");
    EXPECT_TRUE(emptied.RemoveRowKeyVal(u"", u"x"));
    EXPECT_TRUE(emptied.RemoveRowKeyVal(u"", u"y"));
    emptied.AddString(u"", u"y", u"5");
    EXPECT_EQ(dump(emptied), "key[z]=[3] key[y]=[5]");

    // No key at all means the first row without one; at the top level a whole section can be that.
    clsFileIniEx plain = parsed(text);
    EXPECT_TRUE(plain.RemoveRowKeyVal(u"A", u""));
    EXPECT_TRUE(plain.RemoveRowKeyVal(u"", u" "));
    EXPECT_EQ(dump(plain), "key[r]=[1] sec[B]{key[x]=[3]}");
}

TEST(clsFileIniEx, GivesBackATextWithoutRepetitions) {
    for (const Text text : {u"\r\n", u"a = 1\r\n\r\n[B]\r\n; c\r\nx= y \r\n\r\n", u"[A]\r\nk="}) {
        EXPECT_EQ(parsed(text).toText(u"\r\n", true), text);
    }
    // A text without any line end is given one.
    EXPECT_EQ(parsed(u"").toText(u"\r\n", true), u"\r\n");
    EXPECT_EQ(parsed(u"a=1").toText(u"\r\n", true), u"a=1\r\n");
    EXPECT_EQ(parsed(u"a=\nb= \nc=1\n").toText(u"\r\n", false), u"b= \r\nc=1\r\n");
}

class Saving : public ::testing::Test {
protected:
    Saving() { (void)platform::setAnsiCodePage(1252); }
    bool save(clsFileIniEx& document, bool keepEmpty = false) {
        return document.Save(dir.inside("t.lng"), u"\r\n", true, keepEmpty);
    }
    platform::test::HookScope hooks;
    test::TempDir dir;
};

TEST_F(Saving, MergesIntoTheFileOnDisk) {
    dir.write("t.lng",
              "; Dutch\r\n[Menu] ; tail\r\nOpen = Openen\r\nExtra=Iets\r\nGone=\r\n[Alone]\r\n");
    clsFileIniEx document;
    document.AddString(u"menu", u"open", u"Openen");
    document.AddString(u"menu", u"Close", u"Sluiten");
    document.AddString(u"", u"root", u"r");
    document.AddString(u"new", u"n", u"1");
    document.AddString(u"New", u"N", u"");  // spells the row anew, section and all
    const std::string saved = "; Dutch\r\nroot=r\r\n[Menu]\r\nopen=Openen\r\nExtra=Iets\r\n"
                              "Close=Sluiten\r\n[Alone]\r\n\r\n[New]";
    ASSERT_TRUE(save(document));
    EXPECT_EQ(dir.read("t.lng"), saved);
    ASSERT_TRUE(save(document, true));
    EXPECT_EQ(dir.read("t.lng"), saved + "\r\nN=");
}

TEST_F(Saving, CleansTheNamesThatItAddsToTheFileOnDisk) {
    dir.write("t.lng", "[ Old\t]\r\na = 1\r\nb = 1");
    clsFileIniEx document = parsed(u"[OLD ]\n a =2\n[ New ]\nk = v \nl=w");
    ASSERT_TRUE(save(document));
    EXPECT_EQ(dir.read("t.lng"), "[ Old\t]\r\na=2\r\nb = 1\r\n[New]\r\nk=v\r\nl=w");
}

TEST_F(Saving, WritesTheDocumentAloneWithoutAFileOrWithoutUpdate) {
    clsFileIniEx document;
    document.AddString(u"S", u"a", u"\u00E9");
    ASSERT_TRUE(save(document));
    EXPECT_EQ(dir.read("t.lng"), "[S]\r\na=\xE9");
    document.AddString(u"S", u"b", u"\u0416");
    ASSERT_TRUE(document.Save(u"", u"\n", false));
    EXPECT_EQ(dir.read("t.lng"),
              std::string("\xFF\xFE[\0S\0]\0\n\0a\0=\0\xE9\0\n\0b\0=\0\x16\x04", 24));
    EXPECT_EQ(document.IniFile(), dir.inside("t.lng"));
    // Whether a long text is ANSI may show at its end, and nowhere does a piece of it get lost.
    std::string bytes;
    for (int i = 0; i < 9000; ++i) {
        document.AddString(u"S", u"k" + fromUtf8(std::to_string(i)), u"\u00E9");
        bytes += "\nk" + std::to_string(i) + "=\xE9";
    }
    ASSERT_TRUE(document.RemoveRowKeyVal(u"S", u"b"));
    ASSERT_TRUE(document.Save(u"", u"\n", false));
    EXPECT_EQ(dir.read("t.lng"), "[S]\na=\xE9" + bytes);
    document.AddString(u"S", u"k8999", u"\u0416");
    ASSERT_TRUE(document.Save(u"", u"\n", false));
    EXPECT_TRUE(dir.read("t.lng").ends_with(std::string("9\0=\0\x16\x04", 6)));
    dir.write("t.lng", "[S]\r\na=\xE9");
    clsFileIniEx nothing;
    ASSERT_TRUE(nothing.Save(dir.inside("n.lng")));
    EXPECT_EQ(dir.read("n.lng"), "");
    EXPECT_EQ(failureOf([] { (void)clsFileIniEx().Save(u"  "); }), "I need a file!");

    clsFileIniEx known;
    known.IniFile(dir.inside("t.lng"));
    known.AddString(u"s", u"B", u"2");
    ASSERT_TRUE(known.Save());
    EXPECT_EQ(dir.read("t.lng"), "[S]\r\na=\xE9\r\nB=2");
    ASSERT_TRUE(nothing.Save(u" " + dir.inside("t.lng") + u" "));
    EXPECT_EQ(dir.read("t.lng"), "[S]\r\na=\xE9\r\nB=2");
}

TEST_F(Saving, LeavesAFileAloneThatItCannotRead) {
    const std::string tooLong(clsFileIniEx::kLargestFile + 1, 'x');
    dir.write("t.lng", tooLong);
    clsFileIniEx document;
    document.AddString(u"", u"a", u"1");
    EXPECT_FALSE(save(document));
    EXPECT_EQ(dir.read("t.lng"), tooLong);
    dir.write("t.lng", "\xFF");
    EXPECT_FALSE(save(document));
    EXPECT_EQ(dir.read("t.lng"), "\xFF");
    std::filesystem::resize_file(dir.path() / "t.lng", std::uintmax_t{1} << 40);
    EXPECT_FALSE(save(document));
    EXPECT_EQ(std::filesystem::file_size(dir.path() / "t.lng"), std::uintmax_t{1} << 40);
}

TEST_F(Saving, LeavesAFileAloneThatItCannotWrite) {
    dir.write("t.lng", "a = 1");
    (void)platform::SetFileAttributesW(dir.inside("t.lng"), platform::FILE_ATTRIBUTE_READONLY);
    std::filesystem::create_directory(dir.path() / "folder");
    clsFileIniEx document;
    document.AddString(u"", u"a", u"2");
    // A pattern that one file matches is there for all that ask, and is yet no file to read.
    for (const char* const name : {"t.lng", "folder", "missing/t.lng", "?.lng", "t.lng/"}) {
        for (const bool update : {true, false}) {
            if (!update && name[0] == '?') continue;  // a name as any other
            EXPECT_FALSE(document.Save(dir.inside(name), u"\r\n", update)) << name;
            EXPECT_EQ(dir.read("t.lng"), "a = 1");
        }
    }
}

const struct {
    std::string old;
    Text value;
} kFailedWrites[] = {
    {"a = 1\r\n", u"\u00E9"},
    {"a = 1\r\n", u"\u0416"},
    {"\xFF\xFE=\x04", u"\u0416"},
    {"", u"x"},
};

TEST_F(Saving, PutsTheOldBytesBackWhenWritingFails) {
    for (const auto& c : kFailedWrites) {
        for (const bool update : {true, false}) {
            dir.write("t.lng", c.old);
            clsFileIniEx document;
            document.AddString(u"", u"a", c.value);
            platform::test::failNext(platform::test::FileOp::Write);
            EXPECT_FALSE(document.Save(dir.inside("t.lng"), u"\r\n", update));
            EXPECT_EQ(dir.read("t.lng"), c.old);
        }
    }
    // Bytes that could not be read beforehand do not keep anything from being saved.
    clsFileIniEx document;
    document.AddString(u"", u"a", u"2");
    platform::test::failNext(platform::test::FileOp::Size);
    EXPECT_TRUE(save(document));
    EXPECT_EQ(dir.read("t.lng"), "\r\n\r\na=2");
    // Nothing old stays behind the new bytes where the disk does not tell how long the file is.
    dir.write("t.lng", "b=1\r\n\r\n");
    platform::test::failNext(platform::test::FileOp::Size, 2);
    EXPECT_TRUE(document.Save(dir.inside("t.lng"), u"\r\n", false));
    EXPECT_EQ(dir.read("t.lng"), "a=2");
}

// A disk that gives nothing back, as one whose space others are waiting for: no file may reach
// beyond the limit, old ones included.
class LimitedFiles {
public:
    explicit LimitedFiles(rlim_t bytes) {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~LimitedFiles() {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        (void)std::signal(SIGXFSZ, m_handler);
    }
    LimitedFiles(const LimitedFiles&) = delete;
    LimitedFiles& operator=(const LimitedFiles&) = delete;

private:
    rlimit m_before{};
    void (*m_handler)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

TEST_F(Saving, NeedsNoRoomToPutTheOldBytesBack) {
    const std::string old = "a=1\r\nb=" + std::string(6000, 'x') + "\r\n";
    for (const char16_t unit : {u'2', u'\u0416'}) {
        dir.write("t.lng", old);
        std::filesystem::remove(dir.path() / "new.lng");
        clsFileIniEx document;
        document.AddString(u"", u"a", Text(5000, unit));
        const LimitedFiles limited(4096);
        EXPECT_FALSE(document.Save(dir.inside("t.lng")));
        EXPECT_EQ(dir.read("t.lng"), old);
        EXPECT_FALSE(document.Save(dir.inside("new.lng")));
        EXPECT_FALSE(std::filesystem::exists(dir.path() / "new.lng")) << "half a file";
    }
}

// Small alphabets make everything meet: heads, repeated keys, separators, every kind of line end.
Text randomText(std::mt19937& random, bool many = true) {
    static const Text kPieces[] = {u"a",    u"A",   u"b",   u"=",      u"=",      u"[",     u"]",
                                   u"[s]",  u"[S]", u"[t]", u"[ ]",    u" ",      u"\t",    u";",
                                   u"\r\n", u"\n",  u"\r",  u"\u00C4", u"\u00E4", u"\xD83D"};
    const Text end = kPieces[14 + random() % 3];
    Text text;
    for (std::size_t count = random() % (many ? 60 : 12); count > 0; --count) {
        const std::size_t piece = random() % std::size(kPieces);
        text += piece >= 14 && piece <= 16 && random() % 4 != 0 ? end : kPieces[piece];
    }
    return text;
}

TEST(clsFileIniEx, AgreesWithTheSimpleDocumentOnRandomTexts) {
    std::mt19937 random(20261122);
    for (int round = 0; round < 20000; ++round) {
        const Text text = randomText(random);
        const Text edits = randomText(random);
        clsFileIniEx document = parsed(text);
        simple::Document second;
        second.parse(text);
        for (int edit = 0; edit < 4; ++edit) {
            const Text section = randomText(random, false);
            const Text key = randomText(random, false);
            const Text value = randomText(random, false);
            document.AddString(section, key, value);
            second.addString(section, key, value);
            const simple::Row* found = second.find(section, key);
            ASSERT_EQ(Text(document.GetString(simple::trimmed(section), key)),
                      simple::trimmed(found->value));
        }
        const bool keepEmpty = random() % 2 == 0;
        ASSERT_EQ(document.toText(u"\r\n", keepEmpty), second.written(u"\r\n", keepEmpty))
            << toUtf8(text) << "\nround " << round;
    }
}

TEST(clsFileIniEx, AgreesWithTheSimpleDocumentWhileRowsComeAndGo) {
    const Text sections[] = {u"", u"s", u" S", u"t", u"u", u" "};
    std::mt19937 random(20261123);
    for (int round = 0; round < 300; ++round) {
        const Text text = randomText(random);
        clsFileIniEx document = parsed(text);
        simple::Document second;
        second.parse(text);
        for (int edit = 0; edit < 100; ++edit) {
            const Text section = sections[random() % std::size(sections)];
            const Text key(random() % 2, static_cast<char16_t>(u"aAbBcCdD "[random() % 9]));
            switch (random() % 16) {
            case 0:
                ASSERT_EQ(document.RemoveSection(section), second.removeSection(section));
                break;
            case 1:
            case 2:
            case 3:
            case 4:
            case 5:
            case 6:
            case 7:
                ASSERT_EQ(document.RemoveRowKeyVal(section, key), second.removeKey(section, key));
                break;
            default:
                document.AddString(section, key, u"v");
                second.addString(section, key, u"v");
            }
            ASSERT_EQ(document.toText(u"\n", true), second.written(u"\n", true))
                << toUtf8(text) << "\nround " << round << " edit " << edit;
            const simple::Row* const found = second.find(simple::trimmed(section), key);
            ASSERT_EQ(document.GetString(simple::trimmed(section), key, u"?"),
                      found != nullptr ? simple::trimmed(found->value) : u"?");
        }
    }
}

}  // namespace
