#pragma once

#include <string>

namespace tessaly::services {

/// Unpacks a language's archive into the folder: CODE.aff and CODE.dic, which must be all that is in it, as
/// plain files of a bearable size. Host paths; the folder has no files of these names. Throws an exception
/// whose text says what is wrong; some of the files may then be there.
void unpackMorphology(const std::string& archivePath, const std::string& language, const std::string& folder);

} // namespace tessaly::services
