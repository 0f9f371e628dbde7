// host/PropertyBag.h: the stored property values of one control, by name.
#pragma once
#include "gfx/clsFontHDC.h"
#include "platform/window/surface.h"

#include <map>
#include <memory>
#include <type_traits>
#include <variant>
#include <vector>

using Picture = std::shared_ptr<platform::PictureObject>;

// A value that equals its default is not stored, so that a changed default reaches old data.
// Names are exact. Text that must survive 8-bit storage is stored as the bytes of its UTF-16 units,
// low byte first: see WriteTextBytes.
class PropertyBag {
public:
    using Value = std::variant<std::int32_t, bool, Text, Bytes, StdFont, Picture,
                               std::shared_ptr<std::vector<Picture>>>;

    // The stored value, or the default when there is none of that name or it has another type.
    // Numbers of 16 bits that don't fit give the default, too.
    template <class T> [[nodiscard]] T ReadProperty(TextView sName, const T& vDefault) const {
        const Value* value = find(sName);
        if (value == nullptr) return vDefault;
        if constexpr (std::is_integral_v<T> && !std::is_same_v<T, bool>) {
            const auto* number = std::get_if<std::int32_t>(value);
            return number == nullptr || static_cast<T>(*number) != *number
                       ? vDefault
                       : static_cast<T>(*number);
        } else {
            const auto* typed = std::get_if<T>(value);
            return typed == nullptr ? vDefault : *typed;
        }
    }
    template <class T>
    void WriteProperty(TextView sName, const T& vValue, const std::type_identity_t<T>& vDefault) {
        if (vValue == vDefault) {
            remove(sName);
        } else if constexpr (std::is_integral_v<T> && !std::is_same_v<T, bool>) {
            store(sName, Value(static_cast<std::int32_t>(vValue)));
        } else {
            store(sName, Value(vValue));
        }
    }

    // Text as bytes. An odd count of stored bytes gives the default; plain text is taken as well.
    [[nodiscard]] Text ReadTextBytes(TextView sName, const Text& sDefault) const;
    void WriteTextBytes(TextView sName, const Text& sValue, const Text& sDefault);

    [[nodiscard]] bool Contains(TextView sName) const { return find(sName) != nullptr; }
    [[nodiscard]] std::size_t Count() const { return m_values.size(); }
    // The same values under the same names; of pictures the same objects.
    friend bool operator==(const PropertyBag&, const PropertyBag&) = default;

private:
    [[nodiscard]] const Value* find(TextView sName) const;
    void store(TextView sName, Value value);
    void remove(TextView sName);
    std::map<Text, Value, std::less<>> m_values;
};
