// host/PropertyTable.h: the stored properties of a control as one table: name and member. It
// loads, saves and tells them; the defaults are those of a fresh record.
#pragma once
#include "host/PropertyBag.h"

#include <initializer_list>
#include <string>

template <class Props> class PropertyTable {
public:
    using Member =
        std::variant<std::int32_t Props::*, std::int16_t Props::*, bool Props::*, Text Props::*>;
    struct Row {
        const char16_t* sName;
        Member member;
        bool bPlainText = false;  // a text that is stored as it is, not as the bytes of its units
    };

    PropertyTable(std::initializer_list<Row> rows) : m_rows(rows) {}

    // Values that are not stored become those of `defaults`.
    void read(const PropertyBag& oBag, Props& props, const Props& defaults) const {
        for (const Row& row : m_rows) {
            std::visit([&](auto member) { readOne(oBag, row, props.*member, defaults.*member); },
                       row.member);
        }
    }
    void write(PropertyBag& oBag, const Props& props, const Props& defaults) const {
        for (const Row& row : m_rows) {
            std::visit([&](auto member) { writeOne(oBag, row, props.*member, defaults.*member); },
                       row.member);
        }
    }
    // One line a property: name, type, value; colours as numbers.
    [[nodiscard]] std::string dump(const Props& props) const {
        std::string lines;
        for (const Row& row : m_rows) {
            std::visit(
                [&](auto member) { lines += toUtf8(row.sName) + dumpOne(props.*member) + '\n'; },
                row.member);
        }
        return lines;
    }
    [[nodiscard]] const std::vector<Row>& rows() const { return m_rows; }

private:
    template <class T>
    static void readOne(const PropertyBag& oBag, const Row& row, T& value, const T& vDefault) {
        if constexpr (std::is_same_v<T, Text>) {
            value = oBag.ReadTextBytes(row.sName, vDefault);
        } else {
            value = oBag.ReadProperty(row.sName, vDefault);
        }
    }
    template <class T>
    static void writeOne(PropertyBag& oBag, const Row& row, const T& value, const T& vDefault) {
        if constexpr (std::is_same_v<T, Text>) {
            if (!row.bPlainText) {
                oBag.WriteTextBytes(row.sName, value, vDefault);
                return;
            }
        }
        oBag.WriteProperty(row.sName, value, vDefault);
    }
    static std::string dumpOne(std::int32_t value) { return " 32 " + std::to_string(value); }
    static std::string dumpOne(std::int16_t value) { return " 16 " + std::to_string(value); }
    static std::string dumpOne(bool value) { return value ? " bool true" : " bool false"; }
    static std::string dumpOne(const Text& value) { return " text \"" + toUtf8(value) + '"'; }

    std::vector<Row> m_rows;
};
