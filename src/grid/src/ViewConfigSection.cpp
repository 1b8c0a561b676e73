// Typed settings on raw text, the in-memory store, and defaults for keys
// that are missing.
#include "grid/ViewConfigSection.h"

#include <algorithm>

#include "platform/Text.h"

namespace zarvel {
namespace {

constexpr std::size_t kFaceNameLength = 31;
constexpr std::size_t kFontItems = 13;

std::uint8_t byteOf(const std::wstring& text) {
  return static_cast<std::uint8_t>(platform::wtoi(text) & 0xFF);
}

}  // namespace

// --- Text forms --------------------------------------------------------------

std::wstring ViewConfigSection::ConvertBoolSetting(bool value) const {
  return value ? L"TRUE" : L"FALSE";
}

std::wstring ViewConfigSection::ConvertIntSetting(int value) const {
  return platform::format(L"%d", value);
}

std::wstring ViewConfigSection::ConvertFloatSetting(double value, int decimals) const {
  return platform::format(platform::format(L"%%.%df", decimals), value);
}

std::wstring ViewConfigSection::ConvertIntArraySetting(const std::vector<int>& values,
                                                       const std::wstring& delimiter) const {
  std::vector<std::wstring> texts;
  for (int value : values) texts.push_back(ConvertIntSetting(value));
  return ConvertStringArraySetting(texts, delimiter);
}

std::wstring ViewConfigSection::ConvertStringArraySetting(const std::vector<std::wstring>& values,
                                                          const std::wstring& delimiter) const {
  std::wstring text;
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (i > 0) text += delimiter;
    text += values[i];
  }
  return text;
}

std::wstring ViewConfigSection::ConvertFontSetting(const FontSpec& font) const {
  const std::vector<int> numbers = {font.height,       font.width,     font.escapement,
                                    font.orientation,  font.weight,    font.italic,
                                    font.underline,    font.strikeOut, font.charSet,
                                    font.outPrecision, font.quality,   font.pitchAndFamily};
  return font.faceName.substr(0, kFaceNameLength) + kArrayDelimiter +
         ConvertIntArraySetting(numbers, kArrayDelimiter);
}

std::wstring ViewConfigSection::ConvertRectSetting(const ConfigRect& rect) const {
  return ConvertIntArraySetting({rect.left, rect.top, rect.right, rect.bottom}, kArrayDelimiter);
}

std::wstring ViewConfigSection::ConvertColorSetting(Color color) const {
  return ConvertIntArraySetting({redOf(color), greenOf(color), blueOf(color)}, kArrayDelimiter);
}

std::vector<std::wstring> ViewConfigSection::SplitArrayString(const std::wstring& text,
                                                              const std::wstring& delimiter) const {
  std::vector<std::wstring> items;
  if (text.empty()) return items;
  if (delimiter.empty()) return {text};
  std::size_t start = 0;
  for (std::size_t at = text.find(delimiter); at != std::wstring::npos;
       at = text.find(delimiter, start)) {
    items.push_back(text.substr(start, at - start));
    start = at + delimiter.size();
  }
  items.push_back(text.substr(start));
  return items;
}

// --- Typed reading and writing -----------------------------------------------

std::wstring ViewConfigSection::GetSetting(const std::wstring& name,
                                           const std::wstring& defaultValue) const {
  return ReadSetting(GetSectionName(), name, defaultValue);
}

bool ViewConfigSection::GetBoolSetting(const std::wstring& name, bool defaultValue) const {
  const std::wstring text = GetSetting(name, ConvertBoolSetting(defaultValue));
  if (text == L"TRUE") return true;
  if (text == L"FALSE") return false;
  return defaultValue;
}

int ViewConfigSection::GetIntSetting(const std::wstring& name, int defaultValue) const {
  return platform::wtoi(GetSetting(name, ConvertIntSetting(defaultValue)));
}

double ViewConfigSection::GetFloatSetting(const std::wstring& name, double defaultValue) const {
  const std::wstring text = GetSetting(name, L"");
  return text.empty() ? defaultValue : platform::wtof(text);
}

FontSpec ViewConfigSection::GetFontSetting(const std::wstring& name) const {
  const std::vector<std::wstring> items = SplitArrayString(GetSetting(name, L""), kArrayDelimiter);
  FontSpec font;
  if (items.size() != kFontItems) return font;
  font.faceName = items[0].substr(0, kFaceNameLength);
  font.height = platform::wtoi(items[1]);
  font.width = platform::wtoi(items[2]);
  font.escapement = platform::wtoi(items[3]);
  font.orientation = platform::wtoi(items[4]);
  font.weight = platform::wtoi(items[5]);
  font.italic = byteOf(items[6]);
  font.underline = byteOf(items[7]);
  font.strikeOut = byteOf(items[8]);
  font.charSet = byteOf(items[9]);
  font.outPrecision = byteOf(items[10]);
  font.quality = byteOf(items[11]);
  font.pitchAndFamily = byteOf(items[12]);
  return font;
}

ConfigRect ViewConfigSection::GetRectSetting(const std::wstring& name,
                                             const ConfigRect& defaultValue) const {
  const std::vector<std::wstring> items = SplitArrayString(GetSetting(name, L""), kArrayDelimiter);
  if (items.size() != 4) return defaultValue;
  return ConfigRect{platform::wtoi(items[0]), platform::wtoi(items[1]), platform::wtoi(items[2]),
                    platform::wtoi(items[3])};
}

Color ViewConfigSection::GetColorSetting(const std::wstring& name, Color defaultValue) const {
  const std::vector<std::wstring> items = SplitArrayString(GetSetting(name, L""), kArrayDelimiter);
  if (items.size() != 3) return defaultValue;
  return rgbColor(platform::wtoi(items[0]), platform::wtoi(items[1]), platform::wtoi(items[2]));
}

std::vector<int> ViewConfigSection::GetIntArraySetting(const std::wstring& name) const {
  std::vector<int> values;
  for (const std::wstring& item : GetStringArraySetting(name)) {
    values.push_back(platform::wtoi(item));
  }
  return values;
}

std::vector<std::wstring> ViewConfigSection::GetStringArraySetting(
    const std::wstring& name, const std::wstring& delimiter) const {
  return SplitArrayString(GetSetting(name, L""), delimiter);
}

void ViewConfigSection::SetSetting(const std::wstring& name, const std::wstring& value) {
  WriteSetting(GetSectionName(), name, value);
}

void ViewConfigSection::SetBoolSetting(const std::wstring& name, bool value) {
  SetSetting(name, ConvertBoolSetting(value));
}

void ViewConfigSection::SetIntSetting(const std::wstring& name, int value) {
  SetSetting(name, ConvertIntSetting(value));
}

void ViewConfigSection::SetFloatSetting(const std::wstring& name, double value, int decimals) {
  SetSetting(name, ConvertFloatSetting(value, decimals));
}

void ViewConfigSection::SetFontSetting(const std::wstring& name, const FontSpec& font) {
  SetSetting(name, ConvertFontSetting(font));
}

void ViewConfigSection::SetRectSetting(const std::wstring& name, const ConfigRect& rect) {
  SetSetting(name, ConvertRectSetting(rect));
}

void ViewConfigSection::SetColorSetting(const std::wstring& name, Color color) {
  SetSetting(name, ConvertColorSetting(color));
}

void ViewConfigSection::SetIntArraySetting(const std::wstring& name,
                                           const std::vector<int>& values) {
  SetSetting(name, ConvertIntArraySetting(values, kArrayDelimiter));
}

void ViewConfigSection::SetStringArraySetting(const std::wstring& name,
                                              const std::vector<std::wstring>& values,
                                              const std::wstring& delimiter) {
  SetSetting(name, ConvertStringArraySetting(values, delimiter));
}

void ViewConfigSection::RemoveCurrentConfig() {
  RemoveSection(GetSectionName());
}

// --- ViewConfigSectionLocal --------------------------------------------------

std::wstring ViewConfigSectionLocal::ReadSetting(const std::wstring& /*section*/,
                                                 const std::wstring& name,
                                                 const std::wstring& defaultValue) const {
  for (const auto& [key, value] : entries_) {
    if (key == name) return value;
  }
  return defaultValue;
}

void ViewConfigSectionLocal::WriteSetting(const std::wstring& /*section*/, const std::wstring& name,
                                          const std::wstring& value) {
  for (auto& [key, old] : entries_) {
    if (key == name) {
      old = value;
      return;
    }
  }
  entries_.emplace_back(name, value);
}

void ViewConfigSectionLocal::RemoveSection(const std::wstring& /*section*/) {
  entries_.clear();
}

// --- ViewConfigSectionDefault ------------------------------------------------

ViewConfigSectionDefault::ViewConfigSectionDefault(std::wstring viewName)
    : ViewConfigSection(viewName), defaults_(viewName) {}

std::wstring ViewConfigSectionDefault::GetSetting(const std::wstring& name,
                                                  const std::wstring& defaultValue) const {
  const std::wstring value = ReadSetting(GetSectionName(), name, L"");
  return value.empty() ? defaults_.GetSetting(name, defaultValue) : value;
}

void ViewConfigSectionDefault::ResetConfigDefault() {
  RemoveCurrentConfig();
  for (const auto& [name, value] : defaults_.GetEntries()) SetSetting(name, value);
}

}  // namespace zarvel
