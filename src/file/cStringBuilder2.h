// file/cStringBuilder2.h: a text accumulator with a long main string and a short tail.
//
// Pieces gather in the tail, and the tail goes to the main string as a whole: many small appends
// cost no more than a few long ones.
#pragma once
#include "platform/base/text.h"

class cStringBuilder2 {
public:
    enum class Compare : std::int32_t { Exact = 0, IgnoreCase = 1 };  // by unit; by lower case

    [[nodiscard]] std::size_t Length() const { return m_sMain.size() + m_sTail.size(); }
    [[nodiscard]] Text ToString() const&;
    [[nodiscard]] Text ToString() &&;  // without copying the main string; the builder is spent
    void TheString(Text s);            // becomes the whole content

    void Append(TextView sThis);             // which is no part of this builder's own content
    void AppendWithNewLine(TextView sThis);  // sThis, then CR LF

    // Replaces every occurrence over the whole text, from the front, not looking again at what was
    // put in. An empty sFind replaces nothing.
    void ReplaceString(TextView sFind, TextView sReplace, Compare compare);

    // How the content is divided at the moment: ToString() is main() and then tail().
    [[nodiscard]] TextView main() const { return m_sMain; }
    [[nodiscard]] TextView tail() const { return m_sTail; }

private:
    void mergeTail();

    Text m_sMain;
    Text m_sTail;
};
