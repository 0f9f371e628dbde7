// The drawn grid beside the toolkit's own table and tree, 50,000 rows of five columns at 1200 by
// 800, in one run. Every frame is drawn and brought to the (off-screen) screen.
//
// Theirs show a plain model of strings in uniform rows. Frames: the median of many, in parentheses
// the 95th percentile.
#include "grid/ctlUniGrid.h"
#include "gridRows.h"
#include "host/Form.h"
#include "platform/window/testhooks.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QTreeView>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <malloc.h>

namespace {

constexpr int kRows = 50000, kColumns = 5;
constexpr SIZE kSize{1200, 800};
constexpr const char16_t* kHeaders[] = {u"Row", u"Section", u"Key", u"Default", u"Translation"};

struct Times {
    double median = 0, late = 0;  // milliseconds; the 95th percentile
};

template <class Step> double once(Step step) {
    const auto start = std::chrono::steady_clock::now();
    step();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

template <class Step> Times measured(int times, Step step) {
    std::vector<double> all;
    for (int i = 0; i < times; ++i) all.push_back(once([&] { step(i); }));
    std::ranges::sort(all);
    return {all[all.size() / 2], all[all.size() * 95 / 100]};
}

void line(const char* what, const Times& ours, const Times* table = nullptr,
          const Times* tree = nullptr) {
    std::printf("%-44s %8.2f (%7.2f)", what, ours.median, ours.late);
    for (const Times* theirs : {table, tree}) {
        if (theirs != nullptr) std::printf("   %8.2f (%7.2f)", theirs->median, theirs->late);
    }
    std::printf("\n");
}

// ---- Theirs

class StringModel : public QAbstractTableModel {
public:
    explicit StringModel(const std::vector<Text>& rows) {
        for (const Text& row : rows) {
            m_rows.push_back(
                QString::fromUtf16(row.data(), static_cast<qsizetype>(row.size())).split(u'\t'));
        }
    }
    int rowCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
    }
    int columnCount(const QModelIndex&) const override { return kColumns; }
    QVariant data(const QModelIndex& index, int role) const override {
        if (role != Qt::DisplayRole) return {};
        return m_rows[static_cast<std::size_t>(index.row())][index.column()];
    }
    QVariant headerData(int section, Qt::Orientation way, int role) const override {
        if (role != Qt::DisplayRole || way != Qt::Horizontal) return {};
        return QString::fromUtf16(kHeaders[section]);
    }

private:
    std::vector<QStringList> m_rows;
};

struct Theirs {
    Times first, frame, scroll, page, drag;
};

template <class View, class Header>
Theirs measureView(View& view, QAbstractItemModel& model, Header headerOf) {
    Theirs times;
    const double first = once([&] {
        view.setModel(&model);
        view.resize(kSize.cx, kSize.cy);
        view.setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
        view.show();
        QCoreApplication::processEvents();
        view.viewport()->repaint();
    });
    times.first = {first, first};
    times.frame = measured(200, [&](int) { view.viewport()->repaint(); });
    times.scroll = measured(200, [&](int i) {
        view.verticalScrollBar()->setValue(1000 + i);
        QCoreApplication::processEvents();
    });
    times.page = measured(200, [&](int i) {
        view.verticalScrollBar()->setValue(5000 + i * 100);
        QCoreApplication::processEvents();
    });
    times.drag = measured(200, [&](int i) {
        headerOf(view)->resizeSection(3, 150 + i % 50);
        view.viewport()->repaint();
    });
    return times;
}

// ---- Ours

class Window : public Form {
public:
    Window() : Form(platform::WindowKind::Main) { ClientSize(kSize.cx, kSize.cy); }
};

std::size_t heldBytes() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

// ---- The comparison

void compare(ctlUniGrid& grid, const std::vector<Text>& rows) {
    std::unique_ptr<StringModel> model;
    const double populate = once([&] { model = std::make_unique<StringModel>(rows); });
    const Times theirFill{populate, populate};
    QTableView table;
    table.verticalHeader()->hide();
    const Theirs ofTable =
        measureView(table, *model, [](QTableView& v) { return v.horizontalHeader(); });
    table.hide();
    QTreeView tree;
    tree.setUniformRowHeights(true);
    const Theirs ofTree = measureView(tree, *model, [](QTreeView& v) { return v.header(); });
    tree.hide();
    QSortFilterProxyModel proxy;
    proxy.setSourceModel(model.get());
    table.setModel(&proxy);
    const Times theirSort = measured(
        5, [&](int i) { proxy.sort(3, i % 2 == 0 ? Qt::AscendingOrder : Qt::DescendingOrder); });

    const std::size_t before = heldBytes();
    for (const char16_t* header : kHeaders) grid.AddColumn({.sText = header, .bSortable = true});
    Times fill{1e9, 0}, first{1e9, 0};
    for (int i = 0; i < 5; ++i) {
        grid.BeginUpdate();
        grid.Clear(false);
        const double added = once([&] {
            for (const Text& row : rows) grid.AddRow(row);
        });
        const double shown = once([&] {
            grid.EndUpdate(true, true);
            platform::test::settle();
        });
        fill = {std::min(fill.median, added), std::max(fill.late, added)};
        if (i == 0) first.late = shown;
        first.median = std::min(first.median, shown);
    }
    const double bytes = static_cast<double>(heldBytes() - before) / kRows;
    const double textBytes = static_cast<double>(textUnits(rows)) * sizeof(char16_t) / kRows;
    const Times frame = measured(400, [&](int) { grid.VScroll_Value(100), grid.Refresh(true); });
    const Times scroll = measured(
        400, [&](int i) { grid.VScroll_Value(999 + i * 3); });  // the bar's least step here
    const Times page = measured(400, [&](int i) { grid.VScroll_Value(5000 + i * 100); });
    const Times drag = measured(400, [&](int i) {
        grid.column(4).iMaxWidth = 150 + i % 50;  // as a mouse move sets it
        grid.Refresh(true);
    });
    const Times sort = measured(9, [&](int i) { grid.SortByColum(4, i % 2 == 0); });
    const Times change = measured(200, [&](int i) { grid.CellText(1 + i, 5, u"changed"); });
    const Times key = measured(200, [&](int i) { grid.Row(20000 + i); });

    std::printf("milliseconds, median (95th percentile)       the grid               QTableView"
                "            QTreeView\n");
    line("50,000 rows in (theirs: own model)", fill, &theirFill);
    line("first frame after it", first, &ofTable.first, &ofTree.first);
    line("full frame", frame, &ofTable.frame, &ofTree.frame);
    line("scroll by the least step (ours 3 rows)", scroll, &ofTable.scroll, &ofTree.scroll);
    line("another page (never seen before)", page, &ofTable.page, &ofTree.page);
    line("column drag step", drag, &ofTable.drag, &ofTree.drag);
    line("sort by text", sort, &theirSort);
    line("one cell changed and drawn", change);
    line("current row moved", key);
    std::printf("bytes a row beyond its text: %.0f\n", bytes - textBytes);
}

// The cost of a frame and the number of rows.
void frameByRows(ctlUniGrid& grid, const std::vector<Text>& rows) {
    double few = 0;
    for (const int count : {1000, 1000000}) {
        grid.BeginUpdate();
        grid.Clear(false);
        grid.reserveRows(count);
        for (int i = 0; i < count; ++i) grid.AddRow(rows[static_cast<std::size_t>(i % kRows)]);
        grid.EndUpdate(true, true);
        const Times frames = measured(400, [&](int) { grid.EndUpdate(false, true); });
        const Times measuring = measured(400, [&](int) { grid.Refresh(true); });
        std::printf("%8d rows: frame %.3f (%.3f), with measuring %.3f (%.3f)\n", count,
                    frames.median, frames.late, measuring.median, measuring.late);
        if (few == 0) few = measuring.median;
        if (count > 1000) std::printf("ratio %.3f\n", measuring.median / few);
    }
}

// Multi-line mode, with a column that wraps.
void multiLine(ctlUniGrid& grid, const std::vector<Text>& rows) {
    grid.BeginUpdate();
    grid.Clear(false);
    grid.ColWidth(5, 120);
    grid.AllowMultiLineText(true);
    for (int i = 0; i < 10000; ++i) grid.AddRow(rows[static_cast<std::size_t>(i)]);
    const double firstMeasuring = once([&] { grid.EndUpdate(true, true); });
    const Times lines = measured(200, [&](int i) {
        grid.CellText(5000, 5, i % 2 == 0 ? u"changed to text of several lines" : u"short");
    });
    const Times frame = measured(200, [&](int) { grid.EndUpdate(false, true); });
    std::printf("multi-line, 10,000 rows: first measuring %.1f, one cell changed %.2f (%.2f), "
                "frame %.2f (%.2f)\n",
                firstMeasuring, lines.median, lines.late, frame.median, frame.late);
}

}  // namespace

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QApplication::setStyle(QStringLiteral("fusion"));
    const QApplication application(argc, argv);
    const std::vector<Text> rows = makeRows(kRows);
    Window form;
    form.Show();
    ctlUniGrid grid;
    grid.InitProperties();
    (void)grid.create(form.hWnd(), {0, 0, kSize.cx, kSize.cy});
    platform::test::settle();
    compare(grid, rows);
    frameByRows(grid, rows);
    multiLine(grid, rows);
    return 0;
}
