#include "host/PropertyBag.h"

const PropertyBag::Value* PropertyBag::find(TextView sName) const {
    const auto found = m_values.find(sName);
    return found == m_values.end() ? nullptr : &found->second;
}

void PropertyBag::store(TextView sName, Value value) {
    m_values.insert_or_assign(Text(sName), std::move(value));
}

void PropertyBag::remove(TextView sName) {
    const auto found = m_values.find(sName);
    if (found != m_values.end()) m_values.erase(found);
}

Text PropertyBag::ReadTextBytes(TextView sName, const Text& sDefault) const {
    const Value* value = find(sName);
    if (value == nullptr) return sDefault;
    if (const auto* text = std::get_if<Text>(value)) return *text;
    const auto* bytes = std::get_if<Bytes>(value);
    if (bytes == nullptr || bytes->size() % 2 != 0) return sDefault;
    Text text(bytes->size() / 2, u'\0');
    for (std::size_t i = 0; i < text.size(); ++i) {
        text[i] = static_cast<char16_t>((*bytes)[2 * i] | (*bytes)[2 * i + 1] << 8);
    }
    return text;
}

void PropertyBag::WriteTextBytes(TextView sName, const Text& sValue, const Text& sDefault) {
    if (sValue == sDefault) {
        remove(sName);
        return;
    }
    Bytes bytes;
    bytes.reserve(sValue.size() * 2);
    for (const char16_t unit : sValue) {
        bytes.push_back(static_cast<std::uint8_t>(unit & 0xFF));
        bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
    }
    store(sName, Value(std::move(bytes)));
}
