// Qt asks which release of the system this is for: as it assumes.
