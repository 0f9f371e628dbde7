// grid/store/GridValue.h: the tagged value of a cell, a tag or a column key.
#pragma once
#include "platform/base/text.h"

#include <concepts>
#include <variant>

enum class GridValueType : std::uint8_t { kEmpty, kInteger, kDouble, kBoolean, kText };

class GridValue {
public:
    GridValue() = default;                     // empty
    GridValue(std::int32_t l);                 // 16-bit integer when it fits, else a double
    GridValue(std::int16_t i) : m_value(i) {}  // NOLINT(google-explicit-constructor)
    GridValue(double d) : m_value(d) {}        // NOLINT(google-explicit-constructor)
    GridValue(std::same_as<bool> auto b) : m_value(b) {}
    GridValue(Text s) : m_value(std::move(s)) {}  // NOLINT(google-explicit-constructor)
    GridValue(TextView s) : m_value(Text(s)) {}   // NOLINT(google-explicit-constructor)
    GridValue(const char16_t* s) : m_value(Text(s)) {}

    [[nodiscard]] GridValueType type() const { return static_cast<GridValueType>(m_value.index()); }
    [[nodiscard]] bool isText() const { return type() == GridValueType::kText; }
    [[nodiscard]] bool isNumeric() const {  // an integer or a double
        return type() == GridValueType::kInteger || type() == GridValueType::kDouble;
    }
    // The text of a text value; empty for every other type. Valid until the value changes.
    [[nodiscard]] TextView text() const;

    // Conversions. A number becomes text with at most 15 significant digits and the decimal
    // separator of the user's locale, with an exponent (1E+15, 1E-05) when it is below 0.0001 or
    // has more than 15 digits before the separator; a boolean becomes "True" or "False"; empty
    // becomes "".
    [[nodiscard]] Text toText() const;
    // Empty gives 0, true -1. A text must be a number from its first to its last character, blanks
    // at the ends aside: sign, digits, the locale's decimal separator, an exponent after E or e.
    // Thousands separators ("," beside ".", "." beside any other) may stand between groups of
    // three. Anything else raises 13 "Type mismatch", a number too large for a double 6 "Overflow".
    [[nodiscard]] double toDouble() const;
    // A number gives whether it is not 0. A text must be "true", "false" (in any case) or a number
    // as in toDouble, with the same failures.
    [[nodiscard]] bool toBoolean() const;

    // Negative, 0 or positive: the order of number and flag columns. Numbers by value, booleans as
    // -1 and 0, empty as 0, not-a-number behind all numbers; every number before every text; texts
    // among each other by their units.
    [[nodiscard]] int compare(const GridValue& other) const;

    // Same type and same content; 1 as an integer and 1 as a double differ.
    friend bool operator==(const GridValue&, const GridValue&) = default;

private:
    // In the order of GridValueType.
    std::variant<std::monostate, std::int16_t, double, bool, Text> m_value;
};
