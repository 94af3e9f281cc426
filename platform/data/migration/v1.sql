CREATE TABLE IF NOT EXISTS Dictionaries (
    id INTEGER PRIMARY KEY,
    dicts_id INTEGER NOT NULL,
    name TEXT NOT NULL DEFAULT '',
    file TEXT NOT NULL DEFAULT '',
    lang_from TEXT NOT NULL DEFAULT '',
    lang_iso_from TEXT NOT NULL DEFAULT '',
    lang_to TEXT NOT NULL DEFAULT '',
    lang_iso_to TEXT NOT NULL DEFAULT '',
    thumbnail TEXT NOT NULL DEFAULT '',
    description TEXT NOT NULL DEFAULT '',
    category TEXT NOT NULL DEFAULT '',
    provider TEXT NOT NULL DEFAULT '',
    dict_set TEXT NOT NULL DEFAULT '',
    version INTEGER NOT NULL DEFAULT 0
);
