#include "graphs/drawing/freeimage_runtime.h"

#include <cstdlib>
#include <dlfcn.h>

namespace nbx {

FreeImageRuntime& FreeImageRuntime::Instance() {
  static FreeImageRuntime runtime([] {
    const char* override = std::getenv("NBX_FREEIMAGE_LIBRARY");
    return std::string(override && *override ? override : "libfreeimage.so.3");
  }());
  return runtime;
}

FreeImageRuntime::FreeImageRuntime(std::string library) : library_(std::move(library)) {}

void* FreeImageRuntime::Resolve(const char* name) {
  void* symbol = dlsym(handle_, name);
  if (!symbol && failure_.empty()) failure_ = std::string("missing symbol ") + name;
  return symbol;
}

#define NBX_BIND(name) Bind(name, #name)

bool FreeImageRuntime::Initialise() {
  if (tried_) return available_;
  tried_ = true;
  handle_ = dlopen(library_.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!handle_) {
    const char* error = dlerror();
    failure_ = error ? error : "not found";
    return false;
  }
  NBX_BIND(FreeImage_Initialise);
  NBX_BIND(FreeImage_DeInitialise);
  NBX_BIND(FreeImage_GetVersion);
  NBX_BIND(FreeImage_Allocate);
  NBX_BIND(FreeImage_GetBits);
  NBX_BIND(FreeImage_GetScanLine);
  NBX_BIND(FreeImage_GetInfo);
  NBX_BIND(FreeImage_GetHeight);
  NBX_BIND(FreeImage_GetWidth);
  NBX_BIND(FreeImage_GetBPP);
  NBX_BIND(FreeImage_GetColorType);
  NBX_BIND(FreeImage_GetColorsUsed);
  NBX_BIND(FreeImage_GetPalette);
  NBX_BIND(FreeImage_GetFileType);
  NBX_BIND(FreeImage_ConvertTo4Bits);
  NBX_BIND(FreeImage_ConvertTo16Bits555);
  NBX_BIND(FreeImage_ConvertTo16Bits565);
  NBX_BIND(FreeImage_ConvertTo24Bits);
  NBX_BIND(FreeImage_ConvertTo32Bits);
  NBX_BIND(FreeImage_ConvertToGreyscale);
  NBX_BIND(FreeImage_ColorQuantize);
  NBX_BIND(FreeImage_ColorQuantizeEx);
  NBX_BIND(FreeImage_Dither);
  NBX_BIND(FreeImage_Threshold);
  NBX_BIND(FreeImage_Load);
  NBX_BIND(FreeImage_Save);
  NBX_BIND(FreeImage_SaveToHandle);
  NBX_BIND(FreeImage_Unload);
  if (!failure_.empty()) return false;
  FreeImage_Initialise(FALSE);
  available_ = true;
  return true;
}

#undef NBX_BIND

void FreeImageRuntime::Unload() {
  if (available_) FreeImage_DeInitialise();
  if (handle_) dlclose(handle_);
  handle_ = nullptr;
  tried_ = false;
  available_ = false;
  failure_.clear();
}

}  // namespace nbx
