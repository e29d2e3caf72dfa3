#include "graphs/graph_routines.h"

#include "core/nimbometer.h"

namespace nbx {

void RunGraphRoutines(Nimbometer&) {}
void RedrawGraphs(Nimbometer&) {}
std::string CheckImageFolder(Nimbometer&) { return {}; }

}  // namespace nbx
