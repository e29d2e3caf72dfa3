#pragma once

#include <string_view>

namespace nbx {
struct Nimbometer;

inline constexpr std::size_t FrameLength = 15;
inline constexpr char EndOfReply = 17;  // XON: the frame type that closes a reply

// The receive handler: bytes have arrived on the line. Appends them to the
// receive buffer, cuts 15-byte frames from the first "!" on and acts on each
// by its type; an end-of-reply frame releases the next command.
void OnComm(Nimbometer& nm);

// Acts on one 15-byte frame by its type alone; sets `endSeen` on the
// end-of-reply frame.
void DispatchFrame(Nimbometer& nm, std::string_view frame, bool& endSeen);

}  // namespace nbx
