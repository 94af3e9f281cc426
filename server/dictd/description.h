#pragma once

#include <QString>

namespace tessaly::server {

/// A dictionary's own information text made fit for a reader: hard-wrapped lines joined into paragraphs, and
/// left out what the reader sees elsewhere or has no use for (the title, edition and dates, the history of
/// changes). Paragraphs are separated by an empty line.
QString readableDescription(const QString& infoText, const QString& title);

} // namespace tessaly::server
