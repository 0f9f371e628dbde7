// A window with a grid of 100 rows that says on standard output how the grid is, each time that
// something of it has changed:
//   row 3 selected 1 top 0 left 0 widths 60,80,120 first r001 focus
// m switches the choice of several rows on and off, l cells of several lines. A row that is dragged
// by the middle button carries its name; what is dropped is said. It ends when it is closed.
#include "grid/ctlUniGrid.h"
#include "host/Form.h"
#include "platform/base/failure.h"
#include "platform/window/application.h"
#include "win/cUniTimer.h"

#include <cstdio>

namespace {

void say(const std::string& line) {
    std::printf("%s\n", line.c_str());
    std::fflush(stdout);
}

class Window : public Form, private UniTimerOwner {
public:
    Window() : Form(platform::WindowKind::Main) {
        ClientSize(400, 300);
        Caption(u"Grid");
    }

protected:
    void onLoad() override {
        m_grid.InitProperties();
        m_grid.AddColumn({.sText = u"Name", .iWidth = 60, .bSortable = true});
        m_grid.AddColumn({.sText = u"Section", .iWidth = 80});
        m_grid.AddColumn({.sText = u"Text", .iWidth = 120});
        m_grid.BeginUpdate();
        for (int i = 1; i <= 100; ++i) {
            char name[16];
            std::snprintf(name, sizeof name, "r%03d", i);
            m_grid.AddRow(fromUtf8(std::string(name) + "\tMenu\tfive short words of text"));
        }
        m_grid.EndUpdate();
        m_grid.KeyPress = [this](std::int16_t& KeyAscii) {
            if (KeyAscii == u'm') m_grid.MultiSelect(!m_grid.MultiSelect());
            if (KeyAscii == u'l') m_grid.AllowMultiLineText(!m_grid.AllowMultiLineText());
        };
        m_grid.MouseMove = [this](std::int16_t Button, std::int16_t, float, float) {
            if (Button == 4 && !m_dragging) {
                m_dragging = true;
                m_grid.OLEDrag();
                m_dragging = false;
            }
        };
        m_grid.OLEStartDrag = [this](DataObject& Data, std::int32_t& AllowedEffects) {
            Data.SetText(Text(m_grid.CellText(m_grid.Row(), 1)));
            AllowedEffects = platform::DROPEFFECT_COPY;
        };
        m_grid.OLECompleteDrag = [](std::int32_t& Effect) {
            say("dragged with effect " + std::to_string(Effect));
        };
        m_grid.OLEDropMode(1);
        m_grid.OLEDragDrop = [this](DataObject& Data, std::int32_t&, std::int16_t, std::int16_t,
                                    float, float y) {
            say("dropped " + toUtf8(Data.GetText()) + " on row " +
                std::to_string(m_grid.GetRowByY(static_cast<std::int32_t>(y))));
        };
        (void)m_grid.create(hWnd(), {0, 0, ScaleWidth(), ScaleHeight()});
        m_grid.SetFocus();
        m_timer.TmrStart(*this, 30);
    }
    void onResize() override { m_grid.move(0, 0, ScaleWidth(), ScaleHeight()); }
    void onUnload(bool&) override { platform::PostQuitMessage(0); }

private:
    void UniTimerFired(std::uint32_t, std::int32_t) override {
        std::string now = "row " + std::to_string(m_grid.Row()) + " selected " +
                          std::to_string(m_grid.CountSelected()) + " top " +
                          std::to_string(m_grid.VScroll_Value()) + " left " +
                          std::to_string(m_grid.HScroll_Value()) + " widths ";
        for (std::int32_t c = 1; c <= 3; ++c) {
            now += (c == 1 ? "" : ",") + std::to_string(m_grid.ColWidth(c));
        }
        now += " first " + toUtf8(m_grid.CellText(1, 1));
        if (m_grid.HasFocus()) now += " focus";
        if (now == m_said) return;
        m_said = now;
        say(now);
    }

    ctlUniGrid m_grid;
    cUniTimer m_timer;
    std::string m_said;
    bool m_dragging = false;
};

}  // namespace

int main(int argc, char** argv) {
    try {
        platform::Application application(argc, argv, {});
        Window window;
        window.Show();
        return application.run();
    } catch (const Failure& failure) {
        std::fprintf(stderr, "%s\n", toUtf8(failure.message).c_str());
        return 1;
    }
}
