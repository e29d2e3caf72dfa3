#pragma once

#include <FreeImage.h>
#include <string>

namespace nbx {

// The image library, loaded at run time: a station without it still runs, and
// only the export of the graph pictures stays off. Types come from the
// library's header; no symbol of it is linked.
class FreeImageRuntime {
 public:
  // The one instance of the process. The library is looked for as
  // "libfreeimage.so.3", or as the file named by the environment variable
  // NBX_FREEIMAGE_LIBRARY.
  static FreeImageRuntime& Instance();

  // A runtime over the library file `library` (tests point one at a file
  // that is not there).
  explicit FreeImageRuntime(std::string library);
  FreeImageRuntime(const FreeImageRuntime&) = delete;
  FreeImageRuntime& operator=(const FreeImageRuntime&) = delete;

  // Loads the library and calls FreeImage_Initialise; true when it is usable.
  // Until Unload, a second call returns the first one's answer.
  bool Initialise();
  bool Available() const { return available_; }
  // Why it could not be loaded (the loader's text).
  const std::string& Failure() const { return failure_; }
  // Calls FreeImage_DeInitialise and unloads the library with its codecs;
  // the next Initialise loads it afresh (and fails then if the file has
  // gone meanwhile). Harmless when it is not loaded.
  void Unload();

  // The library's functions, by their own names.
  decltype(&::FreeImage_Initialise) FreeImage_Initialise = nullptr;
  decltype(&::FreeImage_DeInitialise) FreeImage_DeInitialise = nullptr;
  decltype(&::FreeImage_GetVersion) FreeImage_GetVersion = nullptr;
  decltype(&::FreeImage_Allocate) FreeImage_Allocate = nullptr;
  decltype(&::FreeImage_GetBits) FreeImage_GetBits = nullptr;
  decltype(&::FreeImage_GetScanLine) FreeImage_GetScanLine = nullptr;
  decltype(&::FreeImage_GetInfo) FreeImage_GetInfo = nullptr;
  decltype(&::FreeImage_GetHeight) FreeImage_GetHeight = nullptr;
  decltype(&::FreeImage_GetWidth) FreeImage_GetWidth = nullptr;
  decltype(&::FreeImage_GetBPP) FreeImage_GetBPP = nullptr;
  decltype(&::FreeImage_GetColorType) FreeImage_GetColorType = nullptr;
  decltype(&::FreeImage_GetColorsUsed) FreeImage_GetColorsUsed = nullptr;
  decltype(&::FreeImage_GetPalette) FreeImage_GetPalette = nullptr;
  decltype(&::FreeImage_GetFileType) FreeImage_GetFileType = nullptr;
  decltype(&::FreeImage_ConvertTo4Bits) FreeImage_ConvertTo4Bits = nullptr;
  decltype(&::FreeImage_ConvertTo16Bits555) FreeImage_ConvertTo16Bits555 = nullptr;
  decltype(&::FreeImage_ConvertTo16Bits565) FreeImage_ConvertTo16Bits565 = nullptr;
  decltype(&::FreeImage_ConvertTo24Bits) FreeImage_ConvertTo24Bits = nullptr;
  decltype(&::FreeImage_ConvertTo32Bits) FreeImage_ConvertTo32Bits = nullptr;
  decltype(&::FreeImage_ConvertToGreyscale) FreeImage_ConvertToGreyscale = nullptr;
  decltype(&::FreeImage_ColorQuantize) FreeImage_ColorQuantize = nullptr;
  decltype(&::FreeImage_ColorQuantizeEx) FreeImage_ColorQuantizeEx = nullptr;
  decltype(&::FreeImage_Dither) FreeImage_Dither = nullptr;
  decltype(&::FreeImage_Threshold) FreeImage_Threshold = nullptr;
  decltype(&::FreeImage_Load) FreeImage_Load = nullptr;
  decltype(&::FreeImage_Save) FreeImage_Save = nullptr;
  decltype(&::FreeImage_SaveToHandle) FreeImage_SaveToHandle = nullptr;
  decltype(&::FreeImage_Unload) FreeImage_Unload = nullptr;

 private:
  void* Resolve(const char* name);
  template <typename Function>
  void Bind(Function& function, const char* name) {
    function = reinterpret_cast<Function>(Resolve(name));
  }

  std::string library_;
  void* handle_ = nullptr;
  bool tried_ = false;
  bool available_ = false;
  std::string failure_;
};

}  // namespace nbx
