#include "station/freeimage_runtime.h"

#include <cstdlib>
#include <dlfcn.h>

namespace nbx {

FreeImageRuntime& FreeImageRuntime::Instance() {
  static FreeImageRuntime runtime;
  return runtime;
}

void* FreeImageRuntime::Resolve(const char* name) {
  void* symbol = dlsym(handle_, name);
  if (!symbol && failure_.empty()) failure_ = std::string("missing symbol ") + name;
  return symbol;
}

bool FreeImageRuntime::Initialise() {
  if (tried_) return available_;
  tried_ = true;
  const char* override = std::getenv("NBX_FREEIMAGE_LIBRARY");
  handle_ = dlopen(override && *override ? override : "libfreeimage.so.3", RTLD_NOW | RTLD_LOCAL);
  if (!handle_) {
    const char* error = dlerror();
    failure_ = error ? error : "not found";
    return false;
  }
  Bind(FreeImage_Initialise, "FreeImage_Initialise");
  Bind(FreeImage_DeInitialise, "FreeImage_DeInitialise");
  Bind(FreeImage_GetVersion, "FreeImage_GetVersion");
  if (!failure_.empty()) return false;
  FreeImage_Initialise(FALSE);
  available_ = true;
  return true;
}

}  // namespace nbx
