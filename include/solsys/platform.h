/// \file
/// What the library asks of the host's surroundings: a place for debug text, and the folders
/// where data is looked for. Nothing here reads an environment variable or a configuration
/// file.
#pragma once

#include "solsys/export.h"

/// Receives one formatted piece of debug text, NUL-terminated; usually it ends in a newline.
/// It must neither throw nor call the library, and may be called from whichever thread
/// computes.
using DebugPrintHandler = void (*)(const char* text);

/// Formats as `printf` does and hands the text to the handler. Without a handler the text is
/// dropped (on Windows it goes to the system's debug output). Never writes to standard output.
///
/// At most 4095 bytes of text are kept; the rest of a longer one is cut off. Nothing is
/// allocated. A null format does nothing.
SOLSYS_API void PrintDebugString(const char* format, ...);

/// Installs the handler for debug text, null for none. May be called at any time from any
/// thread; a text being printed meanwhile goes to the old or the new handler.
SOLSYS_API void SetDebugPrintHandler(DebugPrintHandler handler);

/// The folders of the library's data. Paths are UTF-8 on every system; none has to exist.
///
/// Until set, Linux: `<home>/.local/share/solsys` (or `/usr/share/solsys` for a user without a
/// home), its subfolder `work` and its subfolder `ephemeris`; Windows: `solsys` in the user's
/// local application data, with the same subfolders.
///
/// The setters copy the text (short of memory they leave the old one); null brings the default
/// back. A pointer answered by a getter holds until the same folder is set again. Set folders
/// before computing on other threads.
class StarwickPath {
  public:
    /// The data folder.
    SOLSYS_API static const char* GetPath();
    /// The work folder: its subfolder `de441pc` is where an ephemeris is looked for when no
    /// other place has one.
    SOLSYS_API static const char* GetWorkPath();
    /// The ephemeris file or folder used by searches that make their own model.
    SOLSYS_API static const char* GetEphemerisPath();

    SOLSYS_API static void SetPath(const char* path);           ///< sets the data folder
    SOLSYS_API static void SetWorkPath(const char* path);       ///< sets the work folder
    SOLSYS_API static void SetEphemerisPath(const char* path);  ///< sets the ephemeris
};
