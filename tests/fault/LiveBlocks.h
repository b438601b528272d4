#pragma once
// Live heap blocks of the process, counted by the replaced global operator new and
// delete of LiveBlocks.cpp; every program that asks links that file.
#include <cstdint>

namespace fault {
std::int64_t LiveBlocks();
}
