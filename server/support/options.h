#pragma once

#include <QString>

namespace tessaly::server {

/// What the command line asks for.
struct Options {
    QString stateDirectory;
    quint16 port = 0; ///< 0: the remembered one, or a free one
    QString dictdDirectory;
    QString hunspellDirectory;
    bool allLanguages = false;
    bool convertAhead = false;
    bool control = false;
    bool exitWithParent = false;
};

/// The options of this process. Ends it if they are wrong (status 2) or only ask for help.
Options parseOptions();

} // namespace tessaly::server
