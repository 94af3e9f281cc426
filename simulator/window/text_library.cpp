#include "text_library.h"

#include <QFile>

namespace tessaly::simulator {

namespace {

/// The title, the author, and paragraphs, a line each.
LibraryText read(const QString& name) {
    QFile file(QStringLiteral(":/Tessaly/Simulator/texts/") + name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("the program lacks its text %s", qPrintable(name));
    QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    LibraryText text{lines.takeFirst(), lines.takeFirst(), {}};
    text.paragraphs = lines;
    return text;
}

} // namespace

const std::vector<LibraryText>& libraryTexts() {
    static const std::vector<LibraryText> texts = [] {
        std::vector<LibraryText> all;
        for (const char* const name :
             {"en.txt", "de.txt", "fr.txt", "ru.txt", "it.txt", "es.txt", "cs.txt", "la.txt"})
            all.push_back(read(QLatin1String(name)));
        return all;
    }();
    return texts;
}

} // namespace tessaly::simulator
