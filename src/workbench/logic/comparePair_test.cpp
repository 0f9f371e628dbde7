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

// The rows; what cannot be read, the cases of the command line show.
std::string compared(std::string_view mainText, std::string_view transText,
                     bool bOnlyUntranslated = false, std::string* progress = nullptr) {
    static const test::TempDir dir;
    dir.write("main.lng", mainText);
    dir.write("trans.lng", transText);
    Rows rows;
    RecordingListener listener;
    const PairFiles files = pvComparePair(dir.inside("main.lng"), dir.inside("trans.lng"),
                                          bOnlyUntranslated, rows, listener);
    EXPECT_EQ(files.sMainFile, dir.inside("main.lng"));
    EXPECT_EQ(files.sTransFile, dir.inside("trans.lng"));
    if (progress != nullptr) *progress = listener.heard;
    return rows.all;
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
    for (int round = 0; round < 400; ++round) {
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
