#include "workbench/logic/comparePair.h"

#include "langfile/simpleDocument_test.h"
#include "support/TempDir.h"
#include "workbench/logic/recording_test.h"

#include <gtest/gtest.h>

namespace {

struct Rows : PairSink {
    void filesRead(const std::shared_ptr<const Text>&,
                   const std::shared_ptr<const Text>&) override {
        all += "read\n";
    }
    void row(const PairRow& row) override {
        static constexpr const char* kStates[] = {" empty", " same", ""};
        all += toUtf8(row.rowText()) + kStates[static_cast<int>(row.state)] + "\n";
        const RowCells cells(row);
        std::string joined;
        for (const TextView cell : cells.cells()) joined += toUtf8(cell) + "\t";
        gridRows.AddRow(row.rowText());
        for (std::int32_t c = 1; c <= 5; ++c) {
            EXPECT_EQ(toUtf8(gridRows.CellText(gridRows.Rows(), c)),
                      toUtf8(cells.cells()[static_cast<std::size_t>(c - 1)]))
                << "cell " << c << " of " << toUtf8(row.rowText());
        }
    }
    std::string all;
    ListGrid gridRows;
};

// The rows, or what was raised and about which file.
std::string compared(const test::TempDir& dir, bool bOnlyUntranslated, std::string* progress) {
    Rows rows;
    RecordingListener listener;
    try {
        const PairFiles files = pvComparePair(dir.inside("main.lng"), dir.inside("trans.lng"),
                                              bOnlyUntranslated, rows, listener);
        EXPECT_EQ(files.sMainFile, dir.inside("main.lng"));
        EXPECT_EQ(files.sTransFile, dir.inside("trans.lng"));
    } catch (const FileFailure& failure) {
        rows.all += toUtf8(failure.message) + " " +
                    (failure.sFile == dir.inside("main.lng")    ? "main"
                     : failure.sFile == dir.inside("trans.lng") ? "trans"
                                                                : "?");
    }
    if (progress != nullptr) *progress = listener.heard;
    return rows.all;
}

std::string compared(std::string_view mainText, std::string_view transText,
                     bool bOnlyUntranslated = false, std::string* progress = nullptr) {
    static const test::TempDir dir;
    dir.write("main.lng", mainText);
    dir.write("trans.lng", transText);
    return compared(dir, bOnlyUntranslated, progress);
}

TEST(pvComparePair, GivesOneRowForEachKeyOfTheMainFile) {
    const struct {
        const char* name;
        const char* mainText;
        const char* transText;
        const char* rows;
    } kCases[] = {
        {"keys before any section have an empty section", "a=1\n[S]\nb=2", "b=9\n[S]\nb=8\n",
         "1\t\ta\t1\t empty\n2\tS\tb\t2\t8\n"},
        {"section and key match without case and end blanks", "[ Menu ]\n Open =Open\n",
         "[menu]\n\topen\t= Openen \n", "1\t Menu \tOpen\tOpen\tOpenen\n"},
        {"a repeated key is one row with the last value at the first place", "[S]\nk=1\nm=2\nK=3\n",
         "[S]\nk=x\n", "1\tS\tK\t3\tx\n2\tS\tm\t2\t empty\n"},
        {"a key of blanks gets no row and no number", "[S]\n  =1\nk=2\n", "[S]\nk=x\n  =y\n",
         "1\tS\tk\t2\tx\n"},
        {"the same but for case and end blanks", "[S]\nk=Open File\n", "[S]\nk=  OPEN file \n",
         "1\tS\tk\tOpen File\tOPEN file same\n"},
        {"an empty default with a translation", "[S]\nk=\n", "[S]\nk=x\n", "1\tS\tk\t\tx\n"},
        {"keys that the main file lacks do not appear", "[S]\nk=1\n", "[S]\nk=x\nm=y\n[T]\nk=z\n",
         "1\tS\tk\t1\tx\n"},
        {"tabs stay in the row text", "[S]\nk\tk=1\t2\n", "[S]\nk\tk=3\n", "1\tS\tk\tk\t1\t2\t3\n"},
        {"only the first separator splits", "[S]\nk=a=b\n", "[S]\nk=c=d\n", "1\tS\tk\ta=b\tc=d\n"},
        {"no key at all", "; note\n[S]\n\n", "", ""},
    };
    for (const auto& c : kCases) {
        EXPECT_EQ(compared(c.mainText, c.transText), std::string("read\n") + c.rows) << c.name;
    }
}

TEST(pvComparePair, KeepsTheNumbersOfTheRowsThatItShows) {
    EXPECT_EQ(compared("[S]\na=1\nb=2\nc=3\nd=4\n", "[S]\na=x\nc=3\n", true),
              "read\n2\tS\tb\t2\t empty\n3\tS\tc\t3\t3 same\n4\tS\td\t4\t empty\n");
    EXPECT_EQ(compared("[S]\na=1\n", "[S]\na=x\n", true), "read\n");
}

TEST(pvComparePair, ReportsProgressOnceASectionWithHalvesToEven) {
    std::string mainText;
    for (const char name : std::string_view("ABCDEFG")) {
        mainText += "[" + std::string(1, name) + "]\nk=1\n";
    }
    std::string progress;
    (void)compared(mainText, "", false, &progress);
    EXPECT_EQ(progress, "0 12 25 38 50 62 75 88");  // eighths: 12.5, 37.5, 62.5 and 87.5 between
}

TEST(pvComparePair, RaisesWhatCannotBeReadOnceItIsAskedFor) {
    const struct {
        const char* name;
        const char* mainText;  // null: there is no such file
        const char* transText;
        const char* outcome;
    } kCases[] = {
        {"no main file", nullptr, "", "read\nPlease load the file first! main"},
        {"no translated file", "k=1", nullptr, "read\nPlease load the file first! trans"},
        {"neither", nullptr, nullptr, "read\nPlease load the file first! main"},
        {"no translated file and no key", "; note", nullptr, "read\n"},
        {"half a mark", "k=1", "\xFF", "read\nPlease load the file first! trans"},
        {"empty files", "", "", "read\n"},
    };
    for (const auto& c : kCases) {
        const test::TempDir dir;
        if (c.mainText != nullptr) dir.write("main.lng", c.mainText);
        if (c.transText != nullptr) dir.write("trans.lng", c.transText);
        EXPECT_EQ(compared(dir, false, nullptr), c.outcome) << c.name;
    }
}

// The same by lists that are searched from the front.
std::string simplyCompared(const Text& mainText, const Text& transText, bool bOnlyUntranslated) {
    simple::Document oMain;
    simple::Document oTrans;
    oMain.parse(mainText);
    oTrans.parse(transText);
    const auto lowered = [](Text s) {
        for (char16_t& unit : s) unit = platform::lowerUnit(unit);
        return simple::trimmed(s, false);
    };
    std::string all = "read\n";
    int number = 0;
    for (const simple::Section& section : oMain.sections) {
        for (const simple::Row& row : section.rows) {
            if (!row.key || simple::trimmed(*row.key).empty()) continue;
            const simple::Row* const other = oTrans.find(section.name, *row.key);
            const Text value = simple::trimmed(row.value);
            const Text translation = other == nullptr ? Text() : simple::trimmed(other->value);
            const std::string state = lowered(translation).empty()             ? " empty"
                                      : lowered(value) == lowered(translation) ? " same"
                                                                               : "";
            ++number;
            if (bOnlyUntranslated && state.empty()) continue;
            all += std::to_string(number) + "\t" + toUtf8(section.name) + "\t" +
                   toUtf8(simple::trimmed(*row.key)) + "\t" + toUtf8(value) + "\t" +
                   toUtf8(translation) + state + "\n";
        }
    }
    return all;
}

TEST(pvComparePair, AgreesWithAPlainComparisonOfRandomFiles) {
    std::mt19937 random(1);
    const auto anyText = [&random] {
        Text text;
        for (std::size_t lines = random() % 60; lines > 0; --lines) {
            for (std::size_t pieces = random() % 7; pieces > 0; --pieces) {
                text += anyOf(random, {u"=", u"=", u"k", u"K", u"b", u" ", u"\t", u"[", u"]",
                                       u"[A]", u"[a]", u"\u00C4", u"\u00E4", u"Open"});
            }
            text += u"\r\n";
        }
        return text;
    };
    for (int round = 0; round < 200; ++round) {
        const Text mainText = anyText();
        const Text transText = anyText();
        const auto bytes = [](const Text& s) { return "\xEF\xBB\xBF" + toUtf8(s); };
        const bool filter = round % 2 == 1;
        ASSERT_EQ(compared(bytes(mainText), bytes(transText), filter),
                  simplyCompared(mainText, transText, filter))
            << toUtf8(mainText) << "---\n"
            << toUtf8(transText);
    }
}

}  // namespace
