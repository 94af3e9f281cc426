import QtQuick 2.0

// Asks whether to wait for a slow server. It shows nothing yet.
FocusScope {
}
