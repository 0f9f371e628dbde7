// Fills, copies, lines and short-lived surfaces, beside memset, memcpy and a QPainter on a QImage.
#include "platform/window/surface.h"

#include <QImage>
#include <QPainter>
#include <benchmark/benchmark.h>
#include <cstring>
#include <vector>

namespace {

using namespace platform;

// A memory context with a compatible bitmap.
struct Target {
    Target(int width, int height) {
        const HDC screen = GetDC(0);
        hDC = CreateCompatibleDC(screen);
        bitmap = CreateCompatibleBitmap(screen, width, height);
        SelectObject(hDC, bitmap);
        ReleaseDC(0, screen);
    }
    ~Target() {
        DeleteDC(hDC);
        DeleteObject(bitmap);
    }
    Target(const Target&) = delete;
    Target& operator=(const Target&) = delete;

    HDC hDC;
    HBITMAP bitmap;
};

// Widths and heights: a button, a grid, a screen.
void sizes(benchmark::internal::Benchmark* b) {
    b->Args({100, 25})->Args({1200, 800})->Args({3840, 2160});
}

int widthOf(const benchmark::State& state) { return static_cast<int>(state.range(0)); }
int heightOf(const benchmark::State& state) { return static_cast<int>(state.range(1)); }
void countBytes(benchmark::State& state) {
    state.SetBytesProcessed(state.iterations() * state.range(0) * state.range(1) * 4);
}

void Fill_FillRect(benchmark::State& state) {
    const Target target(widthOf(state), heightOf(state));
    const HBRUSH brush = CreateSolidBrush(0x336699);
    for (auto _ : state) {
        FillRect(target.hDC, {0, 0, widthOf(state), heightOf(state)}, brush);
        benchmark::ClobberMemory();
    }
    DeleteObject(brush);
    countBytes(state);
}
void Fill_memset(benchmark::State& state) {
    std::vector<char> memory(static_cast<std::size_t>(state.range(0) * state.range(1) * 4));
    for (auto _ : state) {
        std::memset(memory.data(), 0x33, memory.size());
        benchmark::ClobberMemory();
    }
    countBytes(state);
}
void Fill_QPainter(benchmark::State& state) {
    QImage image(widthOf(state), heightOf(state), QImage::Format_RGB32);
    QPainter painter(&image);
    for (auto _ : state) {
        painter.fillRect(image.rect(), QColor(0x33, 0x66, 0x99));
        benchmark::ClobberMemory();
    }
    countBytes(state);
}
// A part of a larger surface: as many runs as rows.
void FillPart_FillRect(benchmark::State& state) {
    const Target target(1200, 800);
    const HBRUSH brush = CreateSolidBrush(0x336699);
    for (auto _ : state) {
        FillRect(target.hDC, {3, 3, 3 + widthOf(state), 3 + heightOf(state)}, brush);
        benchmark::ClobberMemory();
    }
    DeleteObject(brush);
    countBytes(state);
}
void FillPart_memset(benchmark::State& state) {
    std::vector<char> memory(std::size_t{1200} * 800 * 4);
    for (auto _ : state) {
        for (std::size_t y = 0; y < static_cast<std::size_t>(state.range(1)); ++y) {
            std::memset(memory.data() + ((y + 3) * 1200 + 3) * 4, 0x33,
                        static_cast<std::size_t>(state.range(0)) * 4);
        }
        benchmark::ClobberMemory();
    }
    countBytes(state);
}
BENCHMARK(Fill_FillRect)->Apply(sizes);
BENCHMARK(Fill_memset)->Apply(sizes);
BENCHMARK(Fill_QPainter)->Apply(sizes);
BENCHMARK(FillPart_FillRect)->Args({8, 8})->Args({100, 25})->Args({800, 600});
BENCHMARK(FillPart_memset)->Args({8, 8})->Args({100, 25})->Args({800, 600});

void Copy_BitBlt(benchmark::State& state) {
    const Target target(widthOf(state), heightOf(state)), source(widthOf(state), heightOf(state));
    for (auto _ : state) {
        BitBlt(target.hDC, 0, 0, widthOf(state), heightOf(state), source.hDC, 0, 0, SRCCOPY);
        benchmark::ClobberMemory();
    }
    countBytes(state);
}
void Copy_memcpy(benchmark::State& state) {
    const std::vector<char> from(static_cast<std::size_t>(state.range(0) * state.range(1) * 4), 1);
    std::vector<char> to(from.size());
    for (auto _ : state) {
        std::memcpy(to.data(), from.data(), from.size());
        benchmark::ClobberMemory();
    }
    countBytes(state);
}
void Copy_QPainter(benchmark::State& state) {
    QImage from(widthOf(state), heightOf(state), QImage::Format_RGB32);
    from.fill(Qt::blue);
    QImage to(from.size(), QImage::Format_RGB32);
    QPainter painter(&to);
    for (auto _ : state) {
        painter.drawImage(0, 0, from);
        benchmark::ClobberMemory();
    }
    countBytes(state);
}
BENCHMARK(Copy_BitBlt)->Apply(sizes);
BENCHMARK(Copy_memcpy)->Apply(sizes);
BENCHMARK(Copy_QPainter)->Apply(sizes);

// A vertical gradient of 1200 x 800: one line a row, each with a pen of its own.
void Gradient_LineTo(benchmark::State& state) {
    const Target target(1200, 800);
    for (auto _ : state) {
        for (int y = 0; y < 800; ++y) {
            const HPEN pen = CreatePen(PS_SOLID, 1, rgb(y / 4, 128, 255 - y / 4));
            const HGDIOBJ old = SelectObject(target.hDC, pen);
            MoveToEx(target.hDC, 0, y);
            LineTo(target.hDC, 1200, y);
            SelectObject(target.hDC, old);
            DeleteObject(pen);
        }
    }
}
void Gradient_QPainter(benchmark::State& state) {
    QImage image(1200, 800, QImage::Format_RGB32);
    QPainter painter(&image);
    for (auto _ : state) {
        for (int y = 0; y < 800; ++y) {
            painter.setPen(QColor(y / 4, 128, 255 - y / 4));
            painter.drawLine(0, y, 1199, y);
        }
    }
}
BENCHMARK(Gradient_LineTo)->Unit(benchmark::kMillisecond);
BENCHMARK(Gradient_QPainter)->Unit(benchmark::kMillisecond);

// One line of a button face.
void ShortLine_LineTo(benchmark::State& state) {
    const Target target(100, 25);
    for (auto _ : state) {
        const HPEN pen = CreatePen(PS_SOLID, 1, 0x336699);
        const HGDIOBJ old = SelectObject(target.hDC, pen);
        MoveToEx(target.hDC, 2, 5);
        LineTo(target.hDC, 98, 5);
        SelectObject(target.hDC, old);
        DeleteObject(pen);
    }
}
void ShortLine_QPainter(benchmark::State& state) {
    QImage image(100, 25, QImage::Format_RGB32);
    QPainter painter(&image);
    for (auto _ : state) {
        painter.setPen(QColor(0x99, 0x66, 0x33));
        painter.drawLine(2, 5, 97, 5);
    }
}
BENCHMARK(ShortLine_LineTo);
BENCHMARK(ShortLine_QPainter);

void Diagonal_LineTo(benchmark::State& state) {
    const Target target(1200, 800);
    for (auto _ : state) {
        MoveToEx(target.hDC, 0, 0);
        LineTo(target.hDC, 1200, 777);
    }
}
void Diagonal_QPainter(benchmark::State& state) {
    QImage image(1200, 800, QImage::Format_RGB32);
    QPainter painter(&image);
    for (auto _ : state) painter.drawLine(0, 0, 1199, 776);
}
BENCHMARK(Diagonal_LineTo);
BENCHMARK(Diagonal_QPainter);

// What a small picture needs: a section with a context, a copy in, a copy out, and its end.
void SmallSection(benchmark::State& state) {
    const Target target(100, 25);
    BITMAPINFO info;
    info.bmiHeader.biWidth = 16;
    info.bmiHeader.biHeight = 16;
    info.bmiHeader.biBitCount = 32;
    for (auto _ : state) {
        const HDC hDC = CreateCompatibleDC(target.hDC);
        void* pixels;
        const HBITMAP section = CreateDIBSection(hDC, info, DIB_RGB_COLORS, pixels);
        const HGDIOBJ old = SelectObject(hDC, section);
        BitBlt(hDC, 0, 0, 16, 16, target.hDC, 4, 4, SRCCOPY);
        BitBlt(target.hDC, 4, 4, 16, 16, hDC, 0, 0, SRCCOPY);
        SelectObject(hDC, old);
        DeleteDC(hDC);
        DeleteObject(section);
    }
}
BENCHMARK(SmallSection);

// A round face: fill and outline.
void Round_RoundRect(benchmark::State& state) {
    const Target target(100, 25);
    for (auto _ : state) RoundRect(target.hDC, 0, 0, 100, 25, 8, 8);
}
void Round_QPainter(benchmark::State& state) {
    QImage image(100, 25, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setBrush(Qt::white);
    for (auto _ : state) painter.drawRoundedRect(0, 0, 99, 24, 4, 4);
}
BENCHMARK(Round_RoundRect);
BENCHMARK(Round_QPainter);

void Stretch_StretchBlt(benchmark::State& state) {
    const Target target(1200, 800), source(600, 400);
    SetStretchBltMode(target.hDC, COLORONCOLOR);
    for (auto _ : state) {
        StretchBlt(target.hDC, 0, 0, 1200, 800, source.hDC, 0, 0, 600, 400, SRCCOPY);
    }
}
void Stretch_QPainter(benchmark::State& state) {
    QImage from(600, 400, QImage::Format_RGB32);
    from.fill(Qt::blue);
    QImage to(1200, 800, QImage::Format_RGB32);
    QPainter painter(&to);
    for (auto _ : state) painter.drawImage(QRect(0, 0, 1200, 800), from);
}
BENCHMARK(Stretch_StretchBlt)->Unit(benchmark::kMillisecond);
BENCHMARK(Stretch_QPainter)->Unit(benchmark::kMillisecond);

}  // namespace
