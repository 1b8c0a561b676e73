// Typed settings of a view kept as text under a section name, with defaults
// for keys that are missing and named profiles; a grid keeps its column state
// in one. The store behind the raw operations is a derived class's matter:
// memory, or a file under the user's configuration folder (ViewConfigStore).
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "grid/GridTypes.h"
#include "platform/Status.h"

namespace zarvel {

class ViewConfigStore;

struct ConfigRect {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
  bool operator==(const ConfigRect& o) const {
    return left == o.left && top == o.top && right == o.right && bottom == o.bottom;
  }
};

// The delimiter of arrays, and of the list of profiles.
inline constexpr const wchar_t* kArrayDelimiter = L", ";

class ViewConfigSection {
 public:
  explicit ViewConfigSection(std::wstring viewName) : viewName_(std::move(viewName)) {}
  virtual ~ViewConfigSection() = default;
  ViewConfigSection(const ViewConfigSection&) = delete;
  ViewConfigSection& operator=(const ViewConfigSection&) = delete;

  const std::wstring& GetViewName() const { return viewName_; }

  // The raw store: text by section and name.
  virtual std::wstring ReadSetting(const std::wstring& section, const std::wstring& name,
                                   const std::wstring& defaultValue) const = 0;
  virtual void WriteSetting(const std::wstring& section, const std::wstring& name,
                            const std::wstring& value) = 0;
  virtual void RemoveSection(const std::wstring& section) = 0;

  // Text forms.
  virtual std::wstring ConvertBoolSetting(bool value) const;
  virtual std::wstring ConvertIntSetting(int value) const;
  virtual std::wstring ConvertFloatSetting(double value, int decimals) const;
  virtual std::wstring ConvertIntArraySetting(const std::vector<int>& values,
                                              const std::wstring& delimiter) const;
  virtual std::wstring ConvertStringArraySetting(const std::vector<std::wstring>& values,
                                                 const std::wstring& delimiter) const;
  // Face name, height, width, escapement, orientation, weight, italic,
  // underline, strike-out, character set, output precision, quality, pitch
  // and family; the clip precision is not kept.
  virtual std::wstring ConvertFontSetting(const FontSpec& font) const;
  virtual std::wstring ConvertRectSetting(const ConfigRect& rect) const;
  virtual std::wstring ConvertColorSetting(Color color) const;
  // Cuts at every whole delimiter; an empty text gives no items.
  virtual std::vector<std::wstring> SplitArrayString(const std::wstring& text,
                                                     const std::wstring& delimiter) const;
  // The section the typed operations use.
  virtual std::wstring GetSectionName() const { return viewName_; }

  virtual std::wstring GetSetting(const std::wstring& name, const std::wstring& defaultValue) const;
  // Any text but "TRUE" or "FALSE" gives the default.
  bool GetBoolSetting(const std::wstring& name, bool defaultValue) const;
  int GetIntSetting(const std::wstring& name, int defaultValue) const;
  double GetFloatSetting(const std::wstring& name, double defaultValue) const;
  // A zeroed font with no face name unless all 13 items are there.
  FontSpec GetFontSetting(const std::wstring& name) const;
  ConfigRect GetRectSetting(const std::wstring& name, const ConfigRect& defaultValue) const;
  Color GetColorSetting(const std::wstring& name, Color defaultValue) const;
  std::vector<int> GetIntArraySetting(const std::wstring& name) const;
  std::vector<std::wstring> GetStringArraySetting(
      const std::wstring& name, const std::wstring& delimiter = kArrayDelimiter) const;

  virtual void SetSetting(const std::wstring& name, const std::wstring& value);
  void SetBoolSetting(const std::wstring& name, bool value);
  void SetIntSetting(const std::wstring& name, int value);
  void SetFloatSetting(const std::wstring& name, double value, int decimals);
  void SetFontSetting(const std::wstring& name, const FontSpec& font);
  void SetRectSetting(const std::wstring& name, const ConfigRect& rect);
  void SetColorSetting(const std::wstring& name, Color color);
  void SetIntArraySetting(const std::wstring& name, const std::vector<int>& values);
  void SetStringArraySetting(const std::wstring& name, const std::vector<std::wstring>& values,
                             const std::wstring& delimiter = kArrayDelimiter);

  virtual void RemoveCurrentConfig();
  // Writes what changed to the store's medium; Ok when nothing needs it.
  virtual platform::Status Flush() { return platform::Status::Ok; }

 private:
  std::wstring viewName_;
};

// Names and values in memory, whatever the section: the defaults of a view.
class ViewConfigSectionLocal : public ViewConfigSection {
 public:
  using ViewConfigSection::ViewConfigSection;
  std::wstring ReadSetting(const std::wstring& section, const std::wstring& name,
                           const std::wstring& defaultValue) const override;
  void WriteSetting(const std::wstring& section, const std::wstring& name,
                    const std::wstring& value) override;
  void RemoveSection(const std::wstring& section) override;

  const std::vector<std::pair<std::wstring, std::wstring>>& GetEntries() const { return entries_; }

 private:
  std::vector<std::pair<std::wstring, std::wstring>> entries_;
};

// A section whose missing (or empty) keys are answered by a default store.
class ViewConfigSectionDefault : public ViewConfigSection {
 public:
  explicit ViewConfigSectionDefault(std::wstring viewName);
  std::wstring GetSetting(const std::wstring& name,
                          const std::wstring& defaultValue) const override;
  ViewConfigSectionLocal& GetDefaultConfig() { return defaults_; }
  bool HasDefaultConfig() const { return !defaults_.GetEntries().empty(); }
  // Removes the section and writes the defaults back into it.
  void ResetConfigDefault();

 private:
  ViewConfigSectionLocal defaults_;
};

// Named profiles of one view. A profile's section is the view's name, "__"
// and the profile's; the view's own section lists the profiles and the
// active one.
class ViewConfigSectionProfiles : public ViewConfigSectionDefault {
 public:
  using ViewConfigSectionDefault::ViewConfigSectionDefault;

  // The profile part of a section name: what follows the first "__" when
  // what goes before it is this view; otherwise none.
  virtual std::wstring SplitSectionName(const std::wstring& section) const;
  virtual std::wstring JoinSectionName(const std::wstring& profile) const;
  virtual std::vector<std::wstring> GetProfiles() const;
  virtual std::wstring GetActiveProfile() const;
  virtual void SetActiveProfile(const std::wstring& profile);
  virtual void AddProfile(const std::wstring& profile);
  // An empty name is refused.
  virtual bool RemoveProfile(const std::wstring& profile);

  std::wstring GetSectionName() const override;
  // Keeps the view's list of profiles when the active section is the view's.
  void RemoveCurrentConfig() override;

 private:
  mutable std::wstring currentSection_;
};

// Profiles kept in a ViewConfigStore, shared by the views of an application.
class ViewConfigSectionApp : public ViewConfigSectionProfiles {
 public:
  ViewConfigSectionApp(std::wstring viewName, std::shared_ptr<ViewConfigStore> store);
  std::wstring ReadSetting(const std::wstring& section, const std::wstring& name,
                           const std::wstring& defaultValue) const override;
  void WriteSetting(const std::wstring& section, const std::wstring& name,
                    const std::wstring& value) override;
  void RemoveSection(const std::wstring& section) override;
  platform::Status Flush() override;

 private:
  std::shared_ptr<ViewConfigStore> store_;
};

}  // namespace zarvel
