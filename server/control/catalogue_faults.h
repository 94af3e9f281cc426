#pragma once

#include <QByteArray>

namespace tessaly::server {

class Catalogue;
struct Switches;

/// The catalogue's JSON as the switches want it.
QByteArray catalogueBody(const Catalogue& catalogue, const Switches& switches);

} // namespace tessaly::server
