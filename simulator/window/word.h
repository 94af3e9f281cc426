#pragma once

#include <QString>
#include <QStringList>

namespace tessaly::simulator {

/// A word of a text without what stands around it: quotation marks, full stops, brackets. Composed, with
/// plain apostrophes and without soft hyphens. Empty when nothing of it is a letter or a digit.
QString bareWord(const QString& text);

/// What to look up for a word of a text, the likeliest first: the word itself, then its parts at an
/// apostrophe ("l'étoile") and at hyphens.
QStringList lookupForms(const QString& text);

} // namespace tessaly::simulator
