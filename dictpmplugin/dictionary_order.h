#pragma once

#include <dictionaries/dictionary_info.h>

namespace tessaly::dictionary {

/// Whether `a` comes before `b` in a catalogue list: by the name of the source language when that differs,
/// else by the name of the target language. An absent or unknown language counts as "Other". Any thread.
bool comesBefore(const DictionaryInfo& a, const DictionaryInfo& b);

} // namespace tessaly::dictionary
