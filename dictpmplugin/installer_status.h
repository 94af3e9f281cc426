#pragma once

/// The file through which the device's installer tells how far it is. One thread.
namespace tessaly::dictionary::installer_status {

/// Makes the file say that nothing has happened yet, so that what an interrupted run left can't pass for the
/// next run's result. False if the file can be neither written nor removed.
bool reset();

/// Percent; 0 when the file doesn't say.
int progress();

/// The installer's result, -1 when the file doesn't say; resets the file.
int takeOutCode();

} // namespace tessaly::dictionary::installer_status
