#pragma once

#include <QString>
#include <QStringList>

namespace tessaly::simulator {

/// What the command line asks for. An empty text leaves the device as it is.
struct Options {
    QString root;       ///< folder of the device
    QString profile;    ///< a name that findProfile() knows
    QString language;   ///< a code of interfaceLanguages()
    QString screenshot; ///< file for a picture of the screen, after which the program ends
    int quitAfterMs = -1;
    bool convertAhead = false; ///< the server has every dictionary ready soon, at the cost of a busy processor

    QString help;  ///< not empty: print it and leave
    QString error; ///< not empty: the command line is wrong
};

/// Needs no application object.
Options parseOptions(const QStringList& arguments);

/// The interface's languages, as two-letter codes.
QStringList interfaceLanguages();

} // namespace tessaly::simulator
