// The reader of the text of the kinds the host keeps as text, in its DXF form.
#pragma once

#include "host/db/KeptText.h"

namespace host::dxf {

class DxfKeptText final : public KeptTextReader {
 public:
  HatchPaths hatchPaths(std::string_view source) const override;
  std::string acisText(std::string_view source) const override;
  TextPoints points(std::string_view source) const override;
};

}  // namespace host::dxf
