// The section-file parser library, libzekrsparser.so.0: reads INI-like text and hands out its sections and items.
// Relies on the standard library only; the compiler loads it at run time and looks its functions up by name.
//
// A host opens a file, parses it, enumerates its sections and their items, and closes it. Handles are opaque. Apart
// from null, a handle is not checked: a file handle is valid from RSOpenFile until RSCloseFile, a section handle as
// long as the file that it came from. No function lets an exception out; where memory runs out it fails as it does for
// any other reason. The library keeps process-wide state (search directories, the hook, the files being enumerated)
// without locking it: call it from one thread at a time.
//
// The buffered functions follow one size protocol: with a null buffer they store the size that the text needs, its NUL
// included; with a buffer, whose size in bytes stands in the size variable, they fill it with the text and its NUL. A
// buffer that is too small, or comes without a size variable, makes the call fail with nothing stored. The size
// variable is changed only for a null buffer.
#pragma once

#include <string>

#define ZEKRSPARSER_API __attribute__((visibility("default")))

// Decides which file a name means. `context` is what RSSetOpenHook was given, `name` the name as it was asked for,
// `includer` the path of the file that was opened last among those being enumerated (empty when there is none). Stores
// the path to open in `path` and returns true, or returns false to refuse. An exception thrown by it refuses, too.
using RSOpenHook = bool (*)(void* context, const std::string& name, const std::string& includer, std::string& path);

extern "C" {

// Opens a file and reads it whole, its sections included; the file itself is closed again at once. The caller owns the
// handle and frees it with RSCloseFile. Null when the file cannot be found, opened or read, is a directory, is longer
// than 4 GiB - 2 bytes, is being enumerated at this moment, when 256 files are, or when memory runs out: whoever has
// the handle gets every section and item.
//
// A file is being enumerated from its first RSEnumSection until its RSCloseFile; device and inode tell whether two
// files are the same. So a file that includes itself, directly or through others, is refused, and a file that was
// opened without being enumerated is not counted.
//
// A relative name is looked for as it stands, then in each search directory, in order; the first place where anything
// of that name stands is taken, whatever it is. Found nowhere, the name is looked for once more with each backslash
// taken as a slash. A hook replaces this search. A name with a NUL in it names no file.
//
// Pipes and devices are read until they end. They are refused when they deliver more than 256 MiB, when they keep
// silent for two seconds or still let their reader wait after a minute, and pipes also when they end without a single
// byte (a FIFO that nobody writes to). A host that would wait for longer reads them itself and gives, by a hook, the
// path of what it has read.
ZEKRSPARSER_API void* RSOpenFile(const std::string& file);

// Lets the sections of an open file be asked for. 1, or 0 for a null handle. Parsing again changes nothing.
ZEKRSPARSER_API unsigned RSParse(void* file);

// The index-th section of a file, counted from 0 in the order of the text; it belongs to the file. Null past the last
// section, for a null handle and before RSParse. From the first call on, the file counts as being enumerated.
ZEKRSPARSER_API void* RSEnumSection(void* file, unsigned index);

// The name of a section and the number of its line, counted from 1. With a null `name`, stores the needed size in
// `*size`; with a buffer of `*size` bytes, fills it and stores the line in `*line` (unless `line` is null). 1, or 0 for
// a null handle or a buffer too small.
ZEKRSPARSER_API unsigned RSGetSectInfo(void* section, char* name, unsigned* size, unsigned* line);

// The index-th item of a section, counted from 0: its key, its value and the number of its line. The size protocol
// holds for either buffer by itself; the line is stored (unless `line` is null) once a buffer is filled. 1 while the
// item exists; 0 past the last, for a null handle, or a buffer too small.
ZEKRSPARSER_API unsigned RSEnumItem(void* section, unsigned index, char* key, unsigned* keySize, char* value,
                                    unsigned* valueSize, unsigned* line);

// The first section of that name, byte for byte; it belongs to the file. Null when there is none, for a null handle and
// before RSParse. The capital E is part of the published name. Does not make the file count as being enumerated.
ZEKRSPARSER_API void* RSFindSEction(void* file, const std::string& name);

// Frees the file, its sections included, and sets the caller's handle to null. 1, or 0 when `file` or the handle is
// null.
ZEKRSPARSER_API unsigned RSCloseFile(void** file);

// Appends a directory to those in which relative names are looked for. The empty text is the working directory.
ZEKRSPARSER_API void RSAddSearchDir(const std::string& dir);

// Forgets all search directories.
ZEKRSPARSER_API void RSClearSearchDirs();

// Sets the hook that decides alone, in place of the search, which file a name means; null takes it away. `context` is
// handed to each call and stays the caller's.
ZEKRSPARSER_API void RSSetOpenHook(RSOpenHook hook, void* context);

// What RSEnumItem gives, without copying it: stores where the two texts stand, and their sizes with the NUL included,
// the only one in a text. The texts belong to the file. No pointer may be null but `section`. 1 while the item exists;
// 0, with nothing stored, past the last and for a null handle.
ZEKRSPARSER_API unsigned RSPeekItem(void* section, unsigned index, const char** key, unsigned* keySize,
                                    const char** value, unsigned* valueSize, unsigned* line);

}  // extern "C"
