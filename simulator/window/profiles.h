#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

namespace tessaly::simulator {

/// A kind of reader that the simulator can be: its screen, and whether that takes touches.
struct Profile {
    QString name;
    QString label; ///< for the user of the simulator
    QSize screen;  ///< pixels
    bool touch = true;
};

/// Null when there is none of this name. The records live as long as the process.
const Profile* findProfile(const QString& name);
QStringList profileNames();

/// Makes the device one of this profile, respectively says which one it is; empty when it is none of them.
void applyProfile(const Profile& profile);
QString currentProfile();

} // namespace tessaly::simulator
