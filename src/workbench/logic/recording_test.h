// workbench/logic/recording_test.h: what tests of the workbench share: a listener that writes down
// all it hears, a list in one line for each row, and random texts that meet each other.
#pragma once
#include "grid/store/GridData.h"
#include "workbench/logic/job.h"

#include <random>

struct RecordingListener : JobListener {
    void pvSetProgress(int iPercent) override { say(std::to_string(iPercent)); }
    bool cancelled() override { return cancelAt > 0 && ++asked >= cancelAt; }
    void showWait(TextView sInfo) override { say("wait[" + toUtf8(sInfo) + "]"); }
    void closeWait() override { say("close"); }
    void enableSave(bool bEnabled) override { say(bEnabled ? "save" : "no-save"); }
    void focusList() override { say("focus"); }

    void say(const std::string& word) { heard += (heard.empty() ? "" : " ") + word; }

    std::string heard;
    int cancelAt = 0;  // the question at which the answer becomes yes; 0: never
    int asked = 0;
};

// A grid with the five columns of the list, whose drawing the listener hears.
struct ListGrid : GridData {
    ListGrid() {
        for (int i = 0; i < 5; ++i) AddColumn({});
    }
    ListGrid(std::initializer_list<TextView> rowTexts) : ListGrid() {
        for (const TextView row : rowTexts) AddRow(row);
    }
    void DrawControl(bool bCheckSize, bool) override {
        if (drawn != nullptr) drawn->say(bCheckSize ? "measure" : "draw");
    }
    RecordingListener* drawn = nullptr;
};

// "1|Menu|Open|Open|Openen", one line a row.
inline std::string dump(const GridData& grid) {
    std::string all;
    for (std::int32_t i = 1; i <= grid.Rows(); ++i) {
        for (std::int32_t c = 1; c <= grid.Cols(); ++c) {
            all += (c == 1 ? "" : "|") + toUtf8(grid.CellText(i, c));
        }
        all += '\n';
    }
    return all;
}

// One of the words, which are few, so that random texts often match.
inline TextView anyOf(std::mt19937& random, std::initializer_list<TextView> words) {
    return words.begin()[random() % words.size()];
}
