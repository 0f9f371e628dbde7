// workbench/storedValues.h: the property values that a window stores for its controls.
#pragma once
#include "host/Form.h"

// StoredValues().flag(u"Locked", true).number(u"BackColor", sysColor(15))
class StoredValues {
public:
    StoredValues& flag(TextView sName, bool b) {
        m_bag.WriteProperty(sName, b, !b);
        return *this;
    }
    StoredValues& number(TextView sName, std::int32_t l) {
        m_bag.WriteProperty(sName, l, ~l);
        return *this;
    }
    StoredValues& text(TextView sName, const Text& s) {
        m_bag.WriteTextBytes(sName, s, s + u'.');
        return *this;
    }
    StoredValues& font(const StdFont& oFont) {
        StdFont other = oFont;
        other.Name += u'.';
        m_bag.WriteProperty(u"Font", oFont, other);
        return *this;
    }
    operator const PropertyBag&() const { return m_bag; }  // NOLINT(google-explicit-constructor)

private:
    PropertyBag m_bag;
};

// Gives a control its name and its stored values, then its window, at a place in pixels.
template <class Control>
void placeControl(const HostWindow& parent, Control& control, TextView sName, const RECT& place,
                  const PropertyBag& values = {}) {
    control.Name(Text(sName));
    control.ReadProperties(values);
    (void)control.create(parent.hWnd(), place);
}
