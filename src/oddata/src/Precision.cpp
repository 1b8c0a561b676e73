// LUPREC through the port's system variables.
#include "oddata/Precision.h"

#include <cmath>
#include <variant>

#include "oddata/Port.h"

namespace zarvel {

short getLuprec() {
  const auto value = port().editor().getVar(L"LUPREC");
  if (value && std::holds_alternative<short>(*value)) return std::get<short>(*value);
  return 4;
}

void setLuprec(short value) {
  // Both values set here are in LUPREC's range; were one refused, lengths
  // would only print with the drawing's own precision.
  platform::ignoreStatus(port().editor().setVar(L"LUPREC", platform::SysVarValue(value)));
}

double luprecTolerance() { return std::pow(0.1, getLuprec()); }

LuprecGuard::LuprecGuard(short raised) : saved_(getLuprec()) { setLuprec(raised); }

LuprecGuard::~LuprecGuard() { setLuprec(saved_); }

}  // namespace zarvel
