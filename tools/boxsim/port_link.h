#pragma once

#include <string>

namespace nbx::boxsim {

// Makes `linkPath` a symbolic link to `target`, replacing an old link in one
// step so that a reader never finds the path missing. Anything at `linkPath`
// that is not a symbolic link is left alone and refused.
bool PointLink(const std::string& linkPath, const std::string& target, std::string& why);

// Removes `linkPath` if it is still a link to `target`; another box may have
// taken the path over since.
void RemoveLinkTo(const std::string& linkPath, const std::string& target);

}  // namespace nbx::boxsim
