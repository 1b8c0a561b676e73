// The guard round the host's LUPREC, the number of decimals it gives a length.
#pragma once

namespace zarvel {

short getLuprec();
void setLuprec(short value);
// The smallest step that the drawing's units show: 0.1 to the power LUPREC.
double luprecTolerance();

// Raises LUPREC for its lifetime and puts the value read back on every way out.
class LuprecGuard {
 public:
  explicit LuprecGuard(short raised = 8);
  ~LuprecGuard();
  LuprecGuard(const LuprecGuard&) = delete;
  LuprecGuard& operator=(const LuprecGuard&) = delete;

 private:
  short saved_;
};

}  // namespace zarvel
