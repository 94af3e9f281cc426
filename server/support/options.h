#pragma once

#include <QStringList>

namespace tessaly::server {

/// What the command line asks for.
struct Options {
    QString stateFolder;
    quint16 port = 0; ///< 0: the remembered one, or a free one
    QString dictdFolder;
    QString hunspellFolder;
    QString apiKey;
    bool allLanguages = false;
    bool control = false;
    bool exitWithParent = false;

    QString help;  ///< the text to show instead of serving
    QString error; ///< why the command line is refused
};

/// `arguments` starts with the program's name.
Options parseOptions(const QStringList& arguments);

} // namespace tessaly::server
