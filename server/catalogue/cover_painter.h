#pragma once

#include <QByteArray>

namespace tessaly::server {

struct DictionaryRecord;

/// The dictionary's cover as a PNG of 300 x 400 pixels in shades of grey, for e-paper.
QByteArray paintCover(const DictionaryRecord& record);

} // namespace tessaly::server
