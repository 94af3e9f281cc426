#pragma once

#include <string>

namespace tessaly::services {

/// Moves the files of a language from a folder, where they lie complete, to their place in the folder above
/// it, instead of older ones. A language is there when both of its files are: the rules go first and come
/// last, so that at no moment a file of the new data stands beside one of the old. After a kill at any
/// moment, or a failure that isn't to be undone, another call finishes the work. Removes the folder at the
/// end. Throws an exception with the older data in place. Host path; the caller sees to it that nobody else
/// does the same.
void placeFrom(const std::string& readyFolder, const std::string& language);

} // namespace tessaly::services
