// host/DataObject.h: what a drag carries, as the drag events of controls show it.
#pragma once
#include "platform/window/dragdrop.h"

#include <map>
#include <optional>

// Formats by number.
enum : std::int16_t {
    kFormatText = 1,
    kFormatUnicodeText = 13,  // the same text
    kFormatFiles = 15,
    kFormatRichText = -16639,
};

class DataObject {
public:
    DataObject() = default;  // empty, to be filled in OLEStartDrag
    // The data of a drag over a window; it must live as long as this is asked.
    explicit DataObject(const platform::DragData& source) : m_source(&source) {}

    [[nodiscard]] bool GetFormat(std::int16_t iFormat) const;
    [[nodiscard]] Text GetText() const;  // empty without one
    // Empty for a format that isn't there. Text comes as UTF-8; for files there is Files.
    [[nodiscard]] Bytes GetData(std::int16_t iFormat) const;
    [[nodiscard]] std::vector<Text> Files() const;  // paths in the inside form

    // These make the object carry data of its own; nothing of a drag is left then.
    void SetText(Text sText);
    void SetFiles(std::vector<Text> files);
    // Without bytes the format is promised: OLESetData is raised when somebody wants it. Formats
    // that are not in the list above do nothing.
    void SetData(std::int16_t iFormat, std::optional<Bytes> data = {});
    void Clear();

    // For the drag itself.
    [[nodiscard]] platform::DragContent content() const;
    [[nodiscard]] static std::string formatName(std::int16_t iFormat);        // empty: unknown
    [[nodiscard]] static std::int16_t formatNumber(const std::string& name);  // 0: unknown

private:
    const platform::DragData* m_source = nullptr;
    Text m_text;
    bool m_hasText = false;
    std::vector<Text> m_files;
    std::map<std::int16_t, std::optional<Bytes>> m_others;
};
