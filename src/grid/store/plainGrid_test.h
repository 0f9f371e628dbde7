// grid/store/plainGrid_test.h: a grid on a surface that exists as numbers only, with an owner that
// writes down what it hears.
#pragma once
#include "grid/store/GridInteraction.h"
#include "platform/base/failure.h"

#include <algorithm>
#include <string>

class GridPicture {};

namespace test {

// Each unit of text is 6 pixels wide and a line 13 high; every picture is 20 by 30.
class PlainMeasuring : public GridMeasuring {
public:
    GridSize size{200, 100};
    int questions = 0;  // for sizes of texts
    bool fails = false;

    GridSize textSize(TextView s) override {
        if (fails) throw Failure(7, u"", u"no room");
        ++questions;
        return {static_cast<std::int32_t>(s.size()) * 6, 13};
    }
    GridSize textSizeWrapped(TextView s, std::optional<std::int32_t> iWidth) override {
        ++questions;
        std::int32_t widest = 0, lines = 0;
        for (std::size_t start = 0; start <= s.size() && !s.empty();) {
            const std::size_t end = std::min(s.find(u'\n', start), s.size());
            const std::int32_t width = static_cast<std::int32_t>(end - start) * 6;
            const std::int32_t room = std::max(iWidth.value_or(width), 6) / 6 * 6;
            lines += std::max((width + room - 1) / std::max(room, 1), 1);
            widest = std::max(widest, std::min(width, room));
            start = end + 1;
        }
        return {widest, lines * 13};
    }
    GridSize pictureSize(const GridPicture&) override { return {20, 30}; }
    GridSize surfaceSize() override { return size; }
};

class PlainBar : public GridScrollBar {
public:
    std::function<void()> onChange;
    bool shown = true;
    std::int32_t small = 0, large = 0;

    std::int32_t Max() const override { return m_max; }
    void Max(std::int32_t l) override {
        m_max = l;
        Value(m_value);
    }
    std::int32_t Value() const override { return m_value; }
    void Value(std::int32_t l) override {
        l = std::clamp(l, 0, m_max);
        if (l == m_value) return;
        m_value = l;
        if (onChange) onChange();
    }
    void Changes(std::int32_t lSmall, std::int32_t lLarge) override {
        small = lSmall;
        large = lLarge;
    }
    void Visible(bool b) override { shown = b; }
    std::int32_t thickness() const override { return 16; }

private:
    std::int32_t m_max = 0, m_value = 0;
};

struct PlainParts {
    PlainMeasuring surface;
    PlainBar h, v;
};

class PlainGrid : private PlainParts, public GridInteraction {
public:
    PlainGrid() : GridInteraction(static_cast<PlainParts&>(*this).surface, PlainParts::h, v) {
        h.onChange = [this] { hScrollChanged(); };
        v.onChange = [this] { vScrollChanged(); };
        SelectionChange = [this] { note("change " + std::to_string(Row())); };
        Click = [this] { note("click"); };
        DblClick = [this] { note("dblclick"); };
        MouseUp = [this](auto, auto, float, float) { note("up"); };
        MouseWheel = [this](auto Button, auto Shift, float x, float y, bool bDown) {
            note("wheel " + std::to_string(Button) + " " + std::to_string(Shift) + " " +
                 std::to_string(static_cast<int>(x)) + "," + std::to_string(static_cast<int>(y)) +
                 (bDown ? " down" : " up"));
        };
    }
    using GridInteraction::ambientChanged;
    using GridInteraction::focusChanged;
    using GridInteraction::forgetMeasuredTexts;
    using GridInteraction::hScrollDragged;
    using GridInteraction::keyPress;
    using GridInteraction::keyUp;
    using GridInteraction::pvGetRowByOffset;
    using GridInteraction::vScrollDragged;
    using GridInteraction::wheel;
    using PlainParts::h;
    using PlainParts::surface;
    using PlainParts::v;

    int frames = 0, framesAtOnce = 0, failedSteps = 0;
    std::function<void()> onPaint;
    std::int32_t shift = 0;
    bool resizeCursor = false;

    // A press and a release at one place, with the move that brings the mouse there.
    void press(float x, float y, std::int16_t button = 1) {
        move(x, y);
        surfaceMouseDown(button, 0, x, y);
    }
    void release(float x, float y, std::int16_t button = 1) {
        surfaceMouseUp(button, 0, x, y);
        surfaceClick();
    }
    void click(float x, float y, std::int16_t button = 1) {
        press(x, y, button);
        release(x, y, button);
    }
    void doubleClick(float x, float y) {
        click(x, y);
        surfaceDblClick();
        surfaceMouseUp(1, 0, x, y);
    }
    void move(float x, float y, std::int16_t button = 0) { surfaceMouseMove(button, 0, x, y); }
    void drag(float x, float y) { surfaceMouseMove(1, 0, x, y); }
    // Whether the grid has used the key.
    bool key(std::int16_t code) {
        std::int16_t none = 0;
        keyDown(code, none);
        return code == 0;
    }

    // The words since the last call.
    std::string notes() {
        std::string all;
        all.swap(m_notes);
        return all;
    }
    void note(const std::string& word) { m_notes += (m_notes.empty() ? "" : " ") + word; }

    [[nodiscard]] std::string selection() const {
        std::string rows;
        for (std::int32_t i = 1; i <= Rows(); ++i) {
            if (RowSel(i)) rows += (rows.empty() ? "" : " ") + std::to_string(i);
        }
        return rows;
    }
    [[nodiscard]] std::string widths() const {
        std::string all;
        for (std::int32_t c = 1; c <= Cols(); ++c) {
            all += (c == 1 ? "" : " ") + std::to_string(columnAt(c).iCurrentWidth);
        }
        return all;
    }

protected:
    void paint(bool bRefreshNow) override {
        ++frames;
        if (bRefreshNow) ++framesAtOnce;
        if (onPaint) onPaint();
    }
    void stepFailed() override { ++failedSteps; }
    std::int32_t shiftState() const override { return shift; }
    void showResizeCursor(bool b) override { resizeCursor = b; }
    void showTip() override {}

private:
    std::string m_notes;
};

}  // namespace test
