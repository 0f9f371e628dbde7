#include "grid/store/GridValue.h"

#include "grid/store/gridFailures.h"
#include "platform/base/numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace {

constexpr TextView kTrue = u"True";
constexpr TextView kFalse = u"False";

bool isDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

TextView withoutBlanks(TextView s) {
    const std::size_t first = s.find_first_not_of(u' ');
    if (first == TextView::npos) return {};
    return s.substr(first, s.find_last_not_of(u' ') - first + 1);
}

bool equalsWord(TextView s, TextView word) {
    return std::equal(s.begin(), s.end(), word.begin(), word.end(), [](char16_t a, char16_t b) {
        return (a < 0x80 ? a | 0x20 : a) == (b | 0x20);
    });
}

Text numberText(double number) {
    if (number == 0) return u"0";  // also for the negative zero
    char digits[32];
    const auto end =
        std::to_chars(digits, std::end(digits), number, std::chars_format::general, 15).ptr;
    const char16_t separator = platform::decimalSeparator();
    Text s(digits, end);
    for (char16_t& unit : s) {
        if (unit == u'.') {
            unit = separator;
        } else if (unit == u'e') {
            unit = u'E';
        }
    }
    return s;
}

// Not-a-number comes behind all numbers and equals itself.
int compareNumbers(double a, double b) {
    if (std::isnan(a) || std::isnan(b)) return int{std::isnan(a)} - int{std::isnan(b)};
    return a < b ? -1 : int{a > b};
}

// Reads a number as its header tells, into the spelling that the library's parser takes.
class NumberReader {
public:
    explicit NumberReader(TextView s) : m_rest(withoutBlanks(s)) {}

    double read() {
        const bool negative = takeSign() == u'-';
        const char16_t separator = platform::decimalSeparator();
        takeWholePart(separator == u'.' ? u',' : u'.');
        if (next() == separator) {
            m_plain += '.';
            m_rest.remove_prefix(1);
            takeDigits();
        }
        if (std::none_of(m_plain.begin(), m_plain.end(), [](char c) { return c != '.'; })) {
            raiseTypeMismatch();
        }
        const long exponent = takeExponent();
        if (!m_rest.empty()) raiseTypeMismatch();
        const double number = value(exponent);
        return negative ? -number : number;
    }

private:
    [[nodiscard]] char16_t next() const { return m_rest.empty() ? u'\0' : m_rest.front(); }

    char16_t takeSign() {
        const char16_t sign = next();
        if (sign == u'-' || sign == u'+') m_rest.remove_prefix(1);
        return sign;
    }

    std::size_t takeDigits() {
        const std::size_t before = m_plain.size();
        while (isDigit(next())) {
            m_plain += static_cast<char>(next());
            m_rest.remove_prefix(1);
        }
        return m_plain.size() - before;
    }

    // Digits, or one to three digits and then groups of three behind a separator each.
    void takeWholePart(char16_t group) {
        const std::size_t first = takeDigits();
        if (next() != group) return;
        if (first < 1 || first > 3) raiseTypeMismatch();
        while (next() == group) {
            m_rest.remove_prefix(1);
            if (takeDigits() != 3) raiseTypeMismatch();
        }
    }

    long takeExponent() {
        if (next() != u'E' && next() != u'e') return 0;
        m_rest.remove_prefix(1);
        const bool negative = takeSign() == u'-';
        if (!isDigit(next())) raiseTypeMismatch();
        long exponent = 0;
        for (; isDigit(next()); m_rest.remove_prefix(1)) {
            exponent = std::min(exponent * 10 + (next() - u'0'), kLargeExponent);
        }
        return negative ? -exponent : exponent;
    }

    double value(long exponent) {
        m_plain += 'e';
        m_plain += std::to_string(exponent);
        double number = 0;
        const auto result =
            std::from_chars(m_plain.data(), m_plain.data() + m_plain.size(), number);
        if (result.ec != std::errc::result_out_of_range) return number;
        // Too large, or too close to 0: by the place of the first digit that counts.
        const std::size_t point = std::min(m_plain.find('.'), m_plain.find('e'));
        const std::size_t first = m_plain.find_first_of("123456789");
        if (static_cast<long>(point) - static_cast<long>(first) + exponent > 0) raiseOverflow();
        return 0;
    }

    static constexpr long kLargeExponent = 1000000000;

    TextView m_rest;
    std::string m_plain;
};

}  // namespace

GridValue::GridValue(std::int32_t l) {
    if (l == static_cast<std::int16_t>(l)) {
        m_value = static_cast<std::int16_t>(l);
    } else {
        m_value = static_cast<double>(l);
    }
}

TextView GridValue::text() const {
    const Text* const s = std::get_if<Text>(&m_value);
    return s == nullptr ? TextView() : TextView(*s);
}

Text GridValue::toText() const {
    switch (type()) {
    case GridValueType::kInteger:
        return numberText(std::get<std::int16_t>(m_value));
    case GridValueType::kDouble:
        return numberText(std::get<double>(m_value));
    case GridValueType::kBoolean:
        return Text(std::get<bool>(m_value) ? kTrue : kFalse);
    case GridValueType::kText:
        return std::get<Text>(m_value);
    case GridValueType::kEmpty:
        break;
    }
    return {};
}

double GridValue::toDouble() const {
    switch (type()) {
    case GridValueType::kInteger:
        return std::get<std::int16_t>(m_value);
    case GridValueType::kDouble:
        return std::get<double>(m_value);
    case GridValueType::kBoolean:
        return std::get<bool>(m_value) ? -1 : 0;
    case GridValueType::kText:
        return NumberReader(text()).read();
    case GridValueType::kEmpty:
        break;
    }
    return 0;
}

bool GridValue::toBoolean() const {
    if (isText()) {
        if (equalsWord(text(), kTrue)) return true;
        if (equalsWord(text(), kFalse)) return false;
    }
    return toDouble() != 0;
}

int GridValue::compare(const GridValue& other) const {
    if (isText() && other.isText()) return text().compare(other.text());
    if (isText() != other.isText()) return isText() ? 1 : -1;
    return compareNumbers(toDouble(), other.toDouble());
}
