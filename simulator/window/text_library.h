#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace tessaly::simulator {

/// A piece to read.
struct LibraryText {
    QString title;
    QString author;
    QStringList paragraphs;
};

/// The texts on the simulated device. They live as long as the process.
const std::vector<LibraryText>& libraryTexts();

} // namespace tessaly::simulator
