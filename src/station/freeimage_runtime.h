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

  // Loads the library and calls FreeImage_Initialise; true when it is usable.
  // A second call returns the first one's answer.
  bool Initialise();
  bool Available() const { return available_; }
  // Why it could not be loaded (the loader's text).
  const std::string& Failure() const { return failure_; }

  // The library's functions, by their own names.
  decltype(&::FreeImage_Initialise) FreeImage_Initialise = nullptr;
  decltype(&::FreeImage_DeInitialise) FreeImage_DeInitialise = nullptr;
  decltype(&::FreeImage_GetVersion) FreeImage_GetVersion = nullptr;

 private:
  FreeImageRuntime() = default;
  void* Resolve(const char* name);
  template <typename Function>
  void Bind(Function& function, const char* name) {
    function = reinterpret_cast<Function>(Resolve(name));
  }

  void* handle_ = nullptr;
  bool tried_ = false;
  bool available_ = false;
  std::string failure_;
};

}  // namespace nbx
