#include "platform/window/accessibility.h"

#include "platform/window/testhooks.h"
#include "platform/window/window_internal.h"

#include <QAccessible>
#include <QWidget>
#include <gtest/gtest.h>

namespace platform {
namespace {

using test::describeAccessible;

// Three columns; the rows begin at y 20, each 10 pixels high, of which five are in sight.
class Sheet final : public Accessible, public AccessibleTable {
public:
    int rows = 4, current = 1;

    AccessibleRole accessibleRole() const override { return AccessibleRole::Table; }
    Text accessibleName() const override { return u"Rows"; }
    AccessibleState accessibleState() const override { return {.focusable = true}; }
    AccessibleTable* accessibleTable() override { return this; }
    int rowCount() const override { return rows; }
    int columnCount() const override { return 3; }
    Text headerText(int column) const override {
        return Text(1, static_cast<char16_t>(u'A' + column));
    }
    Text cellText(int row, int column) const override {
        return headerText(column) + static_cast<char16_t>(u'0' + row % 10);
    }
    RECT cellRect(int row, int column) const override {
        if (row >= 5) return {};
        const int top = row < 0 ? 0 : 20 + row * 10;
        return {column * 30, top, column * 30 + 30, row < 0 ? 20 : top + 10};
    }
    Cell cellAt(POINT at) const override {
        if (at.x >= 90) return {};
        return {at.y < 20 ? -1 : (at.y - 20) / 10, at.x / 30};
    }
    int currentRow() const override { return current; }
    bool isRowSelected(int row) const override { return row == current; }
    bool selectRow(int row) override {
        current = row;
        return true;
    }
};

class AccessibleWindow : public testing::Test {
protected:
    void SetUp() override {
        ShowWindow(m_hWnd, SW_SHOW);
        test::settle();
    }
    void TearDown() override { DestroyWindow(m_hWnd); }
    test::WindowHookScope m_hooks;
    const HWND m_hWnd =
        createWindow({.kind = WindowKind::Main, .size = {100, 80}, .title = u"Title"});
    Sheet m_sheet;
};

TEST_F(AccessibleWindow, ATableTellsItsHeaderAndItsCells) {
    ASSERT_TRUE(setAccessible(m_hWnd, &m_sheet));
    SetFocus(m_hWnd);
    EXPECT_EQ(describeAccessible(m_hWnd), "table \"Rows\" focusable focused 4 x 3");
    EXPECT_EQ(describeAccessible(m_hWnd, {{-1, 2}}), "column header \"C\"");
    EXPECT_EQ(describeAccessible(m_hWnd, {{0, 0}}), "cell \"A0\" focusable");
    EXPECT_EQ(describeAccessible(m_hWnd, {{1, 2}}), "cell \"C1\" focusable focused selected");
    EXPECT_EQ(describeAccessible(m_hWnd, {{4, 0}}), "nothing");
    EXPECT_EQ(describeAccessible(m_hWnd, {{0, 3}}), "nothing");
    m_sheet.rows = 1;
    EXPECT_EQ(describeAccessible(m_hWnd, {{1, 2}}), "nothing") << "the row is gone";
    m_sheet.rows = 1000000;
    EXPECT_EQ(describeAccessible(m_hWnd, {{999999, 1}}), "cell \"B9\" focusable");
}

TEST_F(AccessibleWindow, ChangesAreToldOnlyToThoseWhoListen) {
    ASSERT_TRUE(setAccessible(m_hWnd, &m_sheet));
    tellAccessible(m_hWnd, AccessibleChange::Name);
    tellAccessibleCell(m_hWnd, 0, 0);
    test::listenAccessible(true);
    tellAccessible(m_hWnd, AccessibleChange::Name);
    tellAccessible(m_hWnd, AccessibleChange::TableReset);
    SetFocus(m_hWnd);
    tellAccessibleCell(m_hWnd, 2, 1);
    tellAccessibleCell(m_hWnd, 7, 1);
    EXPECT_EQ(test::takeAccessibleLog(), "name \"Rows\"\ntable \"Rows\"\nfocus \"B2\"\n");
    tellAccessibleCell(m_hWnd, 0, 0, AccessibleCellChange::Text);
    tellAccessibleCell(m_hWnd, 1, 2, AccessibleCellChange::Selected);
    EXPECT_EQ(test::takeAccessibleLog(), "name \"A0\"\nstate \"C1\"\n");
    EXPECT_TRUE(accessibleIsHeard());
    test::listenAccessible(false);
    EXPECT_EQ(test::takeAccessibleLog(), "");
}

TEST_F(AccessibleWindow, CellsLieBelowTheMenuBar) {
    ASSERT_TRUE(setAccessible(m_hWnd, &m_sheet));
    const HMENU bar = CreateMenu();
    EXPECT_TRUE(InsertMenuItemW(bar, 0, true, {.fMask = MIIM_STRING, .dwTypeData = u"File"}));
    EXPECT_TRUE(SetMenu(m_hWnd, bar));
    POINT corner{};
    EXPECT_TRUE(ClientToScreen(m_hWnd, corner));
    const QAccessibleInterface* cell = QAccessible::queryAccessibleInterface(widgetOf(m_hWnd))
                                           ->childAt(corner.x + 31, corner.y + 25);
    ASSERT_NE(cell, nullptr);
    EXPECT_EQ(cell->text(QAccessible::Name), QStringLiteral("B0"));
    EXPECT_EQ(cell->rect(), QRect(corner.x + 30, corner.y + 20, 30, 10));
}

TEST_F(AccessibleWindow, ItStopsTellingWhenItsTellerGoes) {
    ASSERT_TRUE(setAccessible(m_hWnd, &m_sheet));
    EXPECT_EQ(describeAccessible(m_hWnd).substr(0, 5), "table");
    ASSERT_TRUE(setAccessible(m_hWnd, nullptr));
    EXPECT_EQ(describeAccessible(m_hWnd).find("Rows"), std::string::npos);
    EXPECT_FALSE(setAccessible(0, &m_sheet));
    EXPECT_EQ(describeAccessible(0), "nothing");
    tellAccessible(0, AccessibleChange::Name);
    tellAccessibleCell(0, 0, 0);
}

}  // namespace
}  // namespace platform
