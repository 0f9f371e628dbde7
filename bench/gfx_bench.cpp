// Gradients, button faces, keyed pictures and palettes, beside the same by a QPainter on a QImage
// where that has them.
#include "gfx/clsDIBSection.h"
#include "gfx/clsMEMDC.h"
#include "gfx/modCtlCommon_alphaImg.h"
#include "gfx/modCtlCommon_ctl_faces.h"
#include "gfx/modCtlCommon_ctl_shapes.h"

#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <new>
#include <random>

namespace {

std::size_t allocations = 0;

}  // namespace

// Counts what is allocated, by us and by the toolkit.
// NOLINTBEGIN(cppcoreguidelines-no-malloc)
void* operator new(std::size_t size) {
    ++allocations;
    if (void* memory = std::malloc(size != 0 ? size : 1)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
// NOLINTEND(cppcoreguidelines-no-malloc)

namespace {

using platform::rgb;

// Runs f once ahead of the loop, and tells what the loop allocates.
template <class F> void measure(benchmark::State& state, F f) {
    f();
    const std::size_t before = allocations;
    for (auto _ : state) {
        f();
        benchmark::ClobberMemory();
    }
    state.counters["allocations"] = benchmark::Counter(static_cast<double>(allocations - before),
                                                       benchmark::Counter::kAvgIterations);
}

clsMEMDC surfaceOf(int width, int height) {
    clsMEMDC surface;
    surface.CreateDC(width, height);
    return surface;
}

// ---- Gradients of 1200 x 800

void GradientV_1200x800(benchmark::State& state) {
    const clsMEMDC surface = surfaceOf(1200, 800);
    measure(state, [&] {
        GradientV(surface.Hdc(), 0, 0, 1200, 800, rgb(20, 60, 160), rgb(220, 235, 255));
    });
}
void GradientV_1200x800_QPainter(benchmark::State& state) {
    QImage image(1200, 800, QImage::Format_RGB32);
    QPainter painter(&image);
    measure(state, [&] {
        QLinearGradient gradient(0, 0, 0, 800);
        gradient.setColorAt(0, QColor(20, 60, 160));
        gradient.setColorAt(1, QColor(220, 235, 255));
        painter.fillRect(image.rect(), gradient);
    });
}
void GradientV_1200x800_QPainterLines(benchmark::State& state) {
    QImage image(1200, 800, QImage::Format_RGB32);
    QPainter painter(&image);
    measure(state, [&] {
        for (int y = 0; y < 800; ++y) {
            painter.setPen(QColor(20 + y / 4, 60 + y / 5, 160 + y / 9));
            painter.drawLine(0, y, 1199, y);
        }
    });
}
void GradientH_1200x800(benchmark::State& state) {
    const clsMEMDC surface = surfaceOf(1200, 800);
    measure(state, [&] {
        GradientH(surface.Hdc(), 0, 0, 1200, 800, rgb(20, 60, 160), rgb(220, 235, 255));
    });
}
BENCHMARK(GradientV_1200x800)->Unit(benchmark::kMicrosecond);
BENCHMARK(GradientV_1200x800_QPainter)->Unit(benchmark::kMicrosecond);
BENCHMARK(GradientV_1200x800_QPainterLines)->Unit(benchmark::kMicrosecond);
BENCHMARK(GradientH_1200x800)->Unit(benchmark::kMicrosecond);

// ---- Faces of 100 x 25, by style; rounded and with a border

void DrawButtonFace_100x25(benchmark::State& state) {
    const clsMEMDC surface = surfaceOf(100, 25);
    const ButtonFace face{.iBackColor = rgb(236, 233, 216),
                          .bBorder = true,
                          .bPressed = state.range(1) != 0,
                          .bRounded = true,
                          .iStyle = static_cast<std::int32_t>(state.range(0))};
    measure(state, [&] { DrawButtonFace(surface.Hdc(), {0, 0, 100, 25}, face); });
}
void DrawButtonFace_100x25_QPainter(benchmark::State& state) {
    QImage image(100, 25, QImage::Format_RGB32);
    QPainter painter(&image);
    measure(state, [&] {
        QLinearGradient gradient(0, 0, 0, 25);
        gradient.setColorAt(0, QColor(185, 182, 165));
        gradient.setColorAt(1, QColor(207, 204, 187));
        painter.fillRect(image.rect(), gradient);
        QLinearGradient sheen(0, 3, 0, 9);
        sheen.setColorAt(0, QColor(207, 204, 187));
        sheen.setColorAt(1, QColor(193, 190, 173));
        painter.fillRect(QRect(3, 3, 94, 6), sheen);
        painter.setPen(QColor(140, 137, 120));
        painter.drawRoundedRect(0, 0, 99, 24, 4, 4);
    });
}
BENCHMARK(DrawButtonFace_100x25)->ArgsProduct({{0, 1, 2, 3, 4, 5, 6, 7, 8}, {0, 1}});
BENCHMARK(DrawButtonFace_100x25_QPainter);

// ---- A picture of 16 x 16 with a transparent colour, in a cell of 20 x 18

void KeyedPicture_16x16(benchmark::State& state) {
    clsMEMDC source = surfaceOf(16, 16);
    DrawRectXY(source.Hdc(), 4, 4, 12, 12, rgb(200, 30, 30), true);
    const auto picture = source.Picture();
    const clsMEMDC surface = surfaceOf(100, 25);
    measure(state, [&] {
        pvOverlapImage(surface.Hdc(), 3, 3, 23, 21, picture.get(),
                       {.bPicGrayed = state.range(0) != 0, .bPicTransparent = true});
    });
}
void KeyedPicture_16x16_QPainter(benchmark::State& state) {
    QImage image(16, 16, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    for (int i = 4; i < 12; ++i) image.setPixelColor(i, i, Qt::red);
    QImage target(100, 25, QImage::Format_RGB32);
    QPainter painter(&target);
    measure(state, [&] { painter.drawImage(5, 4, image); });
}
BENCHMARK(KeyedPicture_16x16)->Arg(0)->Arg(1);
BENCHMARK(KeyedPicture_16x16_QPainter);

// ---- An optimal palette of 256 colours for a megapixel: a photograph's smooth colours, noise

void CreateOptimal_Megapixel(benchmark::State& state) {
    constexpr int kExtent = 1024;
    clsDIBSection section;
    section.CreateDC(kExtent, kExtent, 24);
    std::mt19937 random(5);
    for (int y = 0; y < kExtent; ++y) {
        std::uint8_t* line =
            section.BitsPtr() + static_cast<std::ptrdiff_t>(y) * section.BytesPerScanLine();
        for (int x = 0; x < kExtent; ++x, line += 3) {
            const auto noise = static_cast<int>(random() % 16);
            const bool smooth = state.range(0) == 0;
            line[0] = static_cast<std::uint8_t>(smooth ? x / 5 + noise : random());
            line[1] = static_cast<std::uint8_t>(smooth ? y / 5 + noise : random());
            line[2] = static_cast<std::uint8_t>(smooth ? (x + y) / 10 + noise : random());
        }
    }
    clsPalette palette;
    measure(state, [&] { palette.CreateOptimal(section, 256, 8); });
    state.counters["colours"] = palette.Count();
}
void CreateOptimal_Megapixel_QImage(benchmark::State& state) {
    QImage image(1024, 1024, QImage::Format_RGB888);
    std::mt19937 random(5);
    for (int y = 0; y < 1024; ++y) {
        for (int x = 0; x < 1024; ++x) {
            const int noise = static_cast<int>(random() % 16);
            image.setPixelColor(x, y, QColor((x + y) / 10 + noise, y / 5 + noise, x / 5 + noise));
        }
    }
    measure(state, [&] {
        benchmark::DoNotOptimize(
            image.convertToFormat(QImage::Format_Indexed8, Qt::ThresholdDither));
    });
}
BENCHMARK(CreateOptimal_Megapixel)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(CreateOptimal_Megapixel_QImage)->Unit(benchmark::kMillisecond);

}  // namespace
