#pragma once
// What the engine's last progress call left for the tick to draw. Plain data with
// no code, so the process state can hold it.
#include "base/Text.h"

namespace engine {

using base::Text;

struct TransferUpdate {
  Text sFileName;
  double dFileSize = 0;
  double dTotalFilesize = 0;
  double dTotalBuffer = 0;
  Text sTrfRate;
  short iFileProg = 0;
  short iTotalProg = 0;
  Text timeelapsed;
  Text TimeRemaining;
  short engNumber = 0;
  long sBkStatus = 0;
};

class EngineObject;  // the engine control classes derive from this

}  // namespace engine
