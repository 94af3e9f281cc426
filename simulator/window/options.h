#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace tessaly::simulator {

/// A kind of reader that the simulator can be: its screen, and whether that takes touches.
struct Profile {
    QString name;
    QString label;      ///< for the user of the simulator
    std::string screen; ///< pixels, as the device's state has them
    bool touch = true;
};

const std::vector<Profile>& profiles();
/// Makes the device one of this profile, or nothing if there is none of this name.
void applyProfile(const QString& name);
/// The name of the device's profile; empty when it has none of them.
QString currentProfile();

/// The interface's languages, as two-letter codes.
QStringList interfaceLanguages();

/// What the command line asks for. An empty text leaves the device as it is.
struct Options {
    QString root;     ///< folder of the device
    QString profile;  ///< name of one of profiles()
    QString language; ///< one of interfaceLanguages()
    bool convertAhead =
        false; ///< the server has every dictionary ready soon, at the cost of a busy processor

    QString help;  ///< not empty: print it and leave
    QString error; ///< not empty: the command line is wrong
};

/// Needs no application object.
Options parseOptions(const QStringList& arguments);

} // namespace tessaly::simulator
