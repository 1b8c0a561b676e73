// Named profiles of a view's settings, and the profiles kept in the
// application's store.
#include <algorithm>

#include "grid/ViewConfigSection.h"
#include "grid/ViewConfigStore.h"

namespace zarvel {
namespace {

const std::wstring kSeparator = L"__";
const std::wstring kProfilesKey = L"CurrentProfiles";
const std::wstring kActiveKey = L"ActiveProfile";

}  // namespace

std::wstring ViewConfigSectionProfiles::SplitSectionName(const std::wstring& section) const {
  // The cut is at the first "__" behind the view's name, so that a profile
  // may hold "__" itself.
  const std::wstring head = GetViewName() + kSeparator;
  if (section.compare(0, head.size(), head) != 0) return std::wstring();
  return section.substr(head.size());
}

std::wstring ViewConfigSectionProfiles::JoinSectionName(const std::wstring& profile) const {
  return profile.empty() ? GetViewName() : GetViewName() + kSeparator + profile;
}

std::vector<std::wstring> ViewConfigSectionProfiles::GetProfiles() const {
  return SplitArrayString(ReadSetting(GetViewName(), kProfilesKey, L""), kArrayDelimiter);
}

std::wstring ViewConfigSectionProfiles::GetActiveProfile() const {
  return SplitSectionName(GetSectionName());
}

void ViewConfigSectionProfiles::SetActiveProfile(const std::wstring& profile) {
  WriteSetting(GetViewName(), kActiveKey, profile);
  currentSection_ = JoinSectionName(profile);
  AddProfile(profile);
}

void ViewConfigSectionProfiles::AddProfile(const std::wstring& profile) {
  std::vector<std::wstring> profiles = GetProfiles();
  if (std::find(profiles.begin(), profiles.end(), profile) != profiles.end()) return;
  profiles.push_back(profile);
  WriteSetting(GetViewName(), kProfilesKey, ConvertStringArraySetting(profiles, kArrayDelimiter));
}

bool ViewConfigSectionProfiles::RemoveProfile(const std::wstring& profile) {
  if (profile.empty()) return false;
  RemoveSection(JoinSectionName(profile));
  std::vector<std::wstring> profiles = GetProfiles();
  profiles.erase(std::remove(profiles.begin(), profiles.end(), profile), profiles.end());
  WriteSetting(GetViewName(), kProfilesKey, ConvertStringArraySetting(profiles, kArrayDelimiter));
  return true;
}

std::wstring ViewConfigSectionProfiles::GetSectionName() const {
  if (!currentSection_.empty()) return currentSection_;
  std::wstring active = ReadSetting(GetViewName(), kActiveKey, L"");
  if (active.empty()) {
    const std::vector<std::wstring> profiles = GetProfiles();
    if (!profiles.empty()) active = profiles.front();
  }
  currentSection_ = JoinSectionName(active);
  return currentSection_;
}

void ViewConfigSectionProfiles::RemoveCurrentConfig() {
  // The list of profiles is read first, so that a view whose active section
  // is its own keeps it.
  const std::wstring profiles = ReadSetting(GetViewName(), kProfilesKey, L"");
  const std::wstring active = ReadSetting(GetViewName(), kActiveKey, L"");
  RemoveSection(GetSectionName());
  if (!profiles.empty()) WriteSetting(GetViewName(), kProfilesKey, profiles);
  if (!active.empty()) WriteSetting(GetViewName(), kActiveKey, active);
}

// --- ViewConfigSectionApp ----------------------------------------------------

ViewConfigSectionApp::ViewConfigSectionApp(std::wstring viewName,
                                           std::shared_ptr<ViewConfigStore> store)
    : ViewConfigSectionProfiles(std::move(viewName)),
      store_(store ? std::move(store) : ViewConfigStore::InMemory()) {}

std::wstring ViewConfigSectionApp::ReadSetting(const std::wstring& section,
                                               const std::wstring& name,
                                               const std::wstring& defaultValue) const {
  return store_->Read(section, name).value_or(defaultValue);
}

void ViewConfigSectionApp::WriteSetting(const std::wstring& section, const std::wstring& name,
                                        const std::wstring& value) {
  store_->Write(section, name, value);
}

void ViewConfigSectionApp::RemoveSection(const std::wstring& section) {
  store_->RemoveSection(section);
}

platform::Status ViewConfigSectionApp::Flush() {
  return store_->Save();
}

}  // namespace zarvel
