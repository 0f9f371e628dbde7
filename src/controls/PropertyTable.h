// controls/PropertyTable.h: the stored properties of a control as one table: name and member. It
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
    };

    PropertyTable(std::initializer_list<Row> rows) : m_rows(rows) {}

    // Values that are not stored become those of `defaults`.
    void read(const PropertyBag& oBag, Props& props, const Props& defaults) const {
        for (const Row& row : m_rows) {
            std::visit(
                [&](auto member) { readOne(oBag, row.sName, props.*member, defaults.*member); },
                row.member);
        }
    }
    void write(PropertyBag& oBag, const Props& props, const Props& defaults) const {
        for (const Row& row : m_rows) {
            std::visit(
                [&](auto member) { writeOne(oBag, row.sName, props.*member, defaults.*member); },
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
    static void readOne(const PropertyBag& oBag, TextView sName, T& value, const T& vDefault) {
        if constexpr (std::is_same_v<T, Text>) {
            value = oBag.ReadTextBytes(sName, vDefault);
        } else {
            value = oBag.ReadProperty(sName, vDefault);
        }
    }
    template <class T>
    static void writeOne(PropertyBag& oBag, TextView sName, const T& value, const T& vDefault) {
        if constexpr (std::is_same_v<T, Text>) {
            oBag.WriteTextBytes(sName, value, vDefault);
        } else {
            oBag.WriteProperty(sName, value, vDefault);
        }
    }
    static std::string dumpOne(std::int32_t value) { return " 32 " + std::to_string(value); }
    static std::string dumpOne(std::int16_t value) { return " 16 " + std::to_string(value); }
    static std::string dumpOne(bool value) { return value ? " bool true" : " bool false"; }
    static std::string dumpOne(const Text& value) { return " text \"" + toUtf8(value) + '"'; }

    std::vector<Row> m_rows;
};
