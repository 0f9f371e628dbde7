#include "host/DataObject.h"

#include <algorithm>
#include <utility>

namespace {

const struct {
    std::int16_t number;
    const char* name;
} kFormats[] = {
    {kFormatUnicodeText, "text/plain"},
    {kFormatFiles, "text/uri-list"},
    {kFormatRichText, "text/rtf"},
};

}  // namespace

std::string DataObject::formatName(std::int16_t iFormat) {
    if (iFormat == kFormatText) iFormat = kFormatUnicodeText;
    for (const auto& format : kFormats) {
        if (format.number == iFormat) return format.name;
    }
    return {};
}

std::int16_t DataObject::formatNumber(const std::string& name) {
    for (const auto& format : kFormats) {
        if (name == format.name) return format.number;
    }
    return 0;
}

bool DataObject::GetFormat(std::int16_t iFormat) const {
    if (m_source != nullptr) {
        if (iFormat == kFormatFiles) return !m_source->files().empty();
        const std::string name = formatName(iFormat);
        const std::vector<std::string> there = m_source->formats();
        return !name.empty() && std::ranges::find(there, name) != there.end();
    }
    if (iFormat == kFormatText || iFormat == kFormatUnicodeText) return m_hasText;
    if (iFormat == kFormatFiles) return !m_files.empty();
    return m_others.contains(iFormat);
}

Text DataObject::GetText() const { return m_source != nullptr ? m_source->text() : m_text; }

Bytes DataObject::GetData(std::int16_t iFormat) const {
    const std::string name = formatName(iFormat);
    if (m_source != nullptr) return name.empty() ? Bytes() : m_source->bytes(name);
    if (iFormat == kFormatText || iFormat == kFormatUnicodeText) {
        const std::string utf8 = toUtf8(GetText());
        return Bytes(utf8.begin(), utf8.end());
    }
    const auto found = m_others.find(iFormat);
    return found == m_others.end() ? Bytes() : found->second.value_or(Bytes());
}

std::vector<Text> DataObject::Files() const {
    return m_source != nullptr ? m_source->files() : m_files;
}

void DataObject::SetText(Text sText) {
    m_source = nullptr;
    m_text = std::move(sText);
    m_hasText = true;
}

void DataObject::SetFiles(std::vector<Text> files) {
    m_source = nullptr;
    m_files = std::move(files);
}

void DataObject::SetData(std::int16_t iFormat, std::optional<Bytes> data) {
    if (iFormat != kFormatRichText) return;
    m_source = nullptr;
    m_others[iFormat] = std::move(data);
}

void DataObject::Clear() { *this = DataObject(); }

platform::DragContent DataObject::content() const {
    platform::DragContent content{GetText(), Files(), {}, {}};
    for (const auto& [number, data] : m_others) {
        content.others.push_back({formatName(number), data.value_or(Bytes())});
    }
    return content;
}
