// The sample's pak archive as one constant; the build takes the section's bytes out of the object file. A pak is a
// header, the files' bytes, and a directory with an entry of 64 bytes a file, all numbers little-endian.

#include <stddef.h>
#include <stdint.h>

#define FILE_TEXT \
    "This archive belongs to the sample installation of the Velorinth Launcher for Quake II. It holds no game data.\n"

typedef struct Entry {
    char name[56];
    int32_t offset;
    int32_t size;
} Entry;

typedef struct Archive {
    char magic[4];
    int32_t directoryOffset;
    int32_t directoryLength;
    char text[sizeof FILE_TEXT - 1];
    Entry directory[1];
} __attribute__((packed)) Archive;

_Static_assert(sizeof(Entry) == 64, "an entry has 64 bytes");

__attribute__((section(".pak"), used)) const Archive SamplePak = {
    {'P', 'A', 'C', 'K'},
    offsetof(Archive, directory),
    sizeof(Entry),
    FILE_TEXT,
    {{"stand-in.txt", offsetof(Archive, text), sizeof FILE_TEXT - 1}},
};
