// Drawing and measuring text: a screen of a grid, 200 cells of 40 units, and the texts of a column.
// Beside it what the toolkit needs for the same cells on a picture of its own.
#include "platform/window/fonts.h"
#include "platform/window/surface.h"
#include "platform/window/textout.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdlib>
#include <filesystem>

using namespace platform;

namespace {

constexpr int kColumns = 5, kRows = 40, kCellWidth = 240, kCellHeight = 19, kUnits = 40;
constexpr int kCells = kColumns * kRows;
constexpr int kEm = 11;
constexpr std::uint32_t kFlags = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX;

// What the cells are cut from.
const struct {
    const char* name;
    TextView sample;
} kScripts[] = {
    {"Latin", u"The quick brown fox jumps over the lazy dog, and 100 % (a|b) of it \u00fcber "
              u"\u0141\u00f3d\u017a. "},
    {"Cyrillic", u"Съешь же ещё этих мягких французских булок, да выпей чаю: 25 штук. "},
    {"Greek", u"Ξεσκεπάζω την ψυχοφθόρα βδελυγμία, και όλα τα άλλα που είναι εδώ. "},
    {"Chinese",
     u"的一是在不了有和人这中大为上个国我以要他时来用们生到作地于出就分对成会可主发年动同工"},
    {"Arabic", u"مرحبا بالعالم هذا نص طويل في خلية واحدة من الجدول الكبير مع بعض الكلمات "},
    {"Devanagari", u"नमस्ते दुनिया यह एक लंबा पाठ है जो तालिका की एक कोशिका में रहता है "},
};

RECT cellRect(int cell) {
    const int x = cell % kColumns * kCellWidth, y = cell / kColumns * kCellHeight;
    return {x, y, x + kCellWidth - 4, y + kCellHeight};
}

// Texts of 40 units that differ from those of every other seed.
std::vector<Text> textsOf(TextView sample, int count, unsigned seed) {
    std::vector<Text> texts;
    for (int i = 0; i < count; ++i) {
        Text text;
        for (unsigned n = seed * 7919U + static_cast<unsigned>(i); text.size() < 6; n /= 10) {
            text += static_cast<char16_t>(u'0' + n % 10);
        }
        text += u' ';
        for (int k = 0; text.size() < kUnits; ++k) text += sample[(i * 3 + k) % sample.size()];
        texts.push_back(std::move(text));
    }
    return texts;
}

struct Canvas {
    Canvas() {
        const HDC screen = GetDC(0);
        hDC = CreateCompatibleDC(screen);
        hBitmap = CreateCompatibleBitmap(screen, kColumns * kCellWidth, kRows * kCellHeight);
        ReleaseDC(0, screen);
        SelectObject(hDC, hBitmap);
        hFont = CreateFontW(-kEm, 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0,
                            u"MS Sans Serif");
        SelectObject(hDC, hFont);
        SetBkMode(hDC, TRANSPARENT);
        FillRect(hDC, {0, 0, kColumns * kCellWidth, kRows * kCellHeight},
                 GetStockObject(WHITE_BRUSH));
    }
    ~Canvas() {
        DeleteDC(hDC);
        DeleteObject(hBitmap);
        DeleteObject(hFont);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    void draw(const std::vector<Text>& texts) const {
        for (int cell = 0; cell < kCells; ++cell) {
            RECT rect = cellRect(cell);
            DrawTextW(hDC, texts[cell], rect, kFlags);
        }
    }
    HDC hDC;
    HBITMAP hBitmap;
    HFONT hFont;
};

void DrawCellsWarm(benchmark::State& state, TextView sample) {
    const Canvas canvas;
    const auto texts = textsOf(sample, kCells, 1);
    canvas.draw(texts);
    for (auto _ : state) canvas.draw(texts);
}

void DrawCellsNeverSeen(benchmark::State& state, TextView sample) {
    const Canvas canvas;
    canvas.draw(textsOf(sample, kCells, 1));
    static unsigned seed = 2;
    for (auto _ : state) {
        const auto texts = textsOf(sample, kCells, seed++);
        const auto start = std::chrono::steady_clock::now();
        canvas.draw(texts);
        state.SetIterationTime(
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
}

void DrawCellsByToolkit(benchmark::State& state, TextView sample) {
    QImage image(kColumns * kCellWidth, kRows * kCellHeight, QImage::Format_RGB32);
    image.fill(Qt::white);
    QFont font(QStringLiteral("Quillmere Sans"));
    font.setPixelSize(kEm);
    font.setHintingPreference(QFont::PreferFullHinting);
    std::vector<QString> texts;
    for (const Text& text : textsOf(sample, kCells, 1))
        texts.push_back(QString::fromStdU16String(text));
    QPainter painter(&image);
    painter.setFont(font);
    for (auto _ : state) {
        for (int cell = 0; cell < kCells; ++cell) {
            const RECT rect = cellRect(cell);
            painter.drawText(QRect(rect.left, rect.top, rect.right - rect.left, kCellHeight),
                             Qt::AlignVCenter | Qt::TextSingleLine, texts[cell]);
        }
    }
}

void Measure3800Texts(benchmark::State& state, TextView sample) {
    const Canvas canvas;
    const auto texts = textsOf(sample, 3800, 1);
    const auto measureAll = [&] {
        int widest = 0;
        for (const Text& text : texts) {
            RECT rect;
            DrawTextW(canvas.hDC, text, rect, DT_NOPREFIX | DT_CALCRECT | DT_SINGLELINE);
            widest = std::max(widest, rect.right);
        }
        benchmark::DoNotOptimize(widest);
    };
    measureAll();
    for (auto _ : state) measureAll();
}

// One text of a mebi of units in a cell, the rectangle showing its start.
void DrawHugeText(benchmark::State& state, TextView sample) {
    const Canvas canvas;
    Text text;
    while (text.size() < (1U << 20)) text += sample;
    for (auto _ : state) {
        RECT rect = cellRect(0);
        DrawTextW(canvas.hDC, text, rect, kFlags);
    }
}

void registerAll() {
    for (const auto& script : kScripts) {
        const auto add = [&](const char* what, void (*run)(benchmark::State&, TextView)) {
            return benchmark::RegisterBenchmark((std::string(what) + '/' + script.name).c_str(),
                                                run, script.sample)
                ->Unit(benchmark::kMillisecond);
        };
        add("DrawCellsWarm", DrawCellsWarm);
        add("DrawCellsNeverSeen", DrawCellsNeverSeen)->UseManualTime()->MinTime(0.2);
        add("DrawCellsByToolkit", DrawCellsByToolkit);
        add("Measure3800Texts", Measure3800Texts);
        add("DrawHugeText", DrawHugeText);
    }
}

}  // namespace

int main(int argc, char** argv) {
    const auto root = std::filesystem::path(__FILE__).parent_path().parent_path();
    setenv("FONTCONFIG_FILE", (root / "tests/support/gui/fonts.conf").c_str(), 1);
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    const QGuiApplication application(argc, argv);
    registerAll();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
