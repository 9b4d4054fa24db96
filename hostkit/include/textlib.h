// The host's text table: localised texts by number, read from a plain text file.
//
//     char buffer[257];
//     int length = 0;
//     ll_get_text_multiline(2100177, 256, nullptr, buffer, &length);   // "OK"
//
//     char block[64];   // parameters: each value followed by 30, the block ended by 31, 31
//     sprintf(block, "%s%c%s%c%c%c", "1", 30, "10", 30, 31, 31);
//     ll_get_text(1400402, 254, block, buffer, &length);   // "... between 1 and 10."
//
// The file: one text a line, "number<TAB>text", in the system code page. Empty lines and
// lines beginning with "#" are skipped; a number given twice keeps its last text. In a text,
// "\n" is a line break, "\t" a tab, "\\" a backslash, and %1 to %9 are replaced by the first
// to ninth value of the parameter block ("%%" is a percent sign; a placeholder without a
// value becomes empty; any other "%" stays as it is).
//
// The file is KelHostKit.txt beside KelHostKit.dll, unless the host names another one with
// ll_set_text_file. It is read at the first request and kept.
#pragma once
#include "hostkit.h"

#include <stdint.h>

// Writes text `number` into buffer: at most `capacity` characters and a terminator, so the
// buffer holds capacity + 1 bytes. parameters is null or a parameter block. *length (if not
// null) gets the number of characters written. A number without text gives "" and 0 as
// result; otherwise the result is 1. Line breaks become single blanks in this form.
extern "C" KELHOSTKIT_API int __cdecl ll_get_text(uint32_t number, int capacity, const char* parameters,
                                                 char* buffer, int* length);
// The same, with line breaks kept as "\n".
extern "C" KELHOSTKIT_API int __cdecl ll_get_text_multiline(uint32_t number, int capacity, const char* parameters,
                                                           char* buffer, int* length);
// Names the text file to read from now on (null: back to the one beside the DLL) and reads
// it at once. Answers 1 when the file could be read, 0 otherwise (the table is then empty).
extern "C" KELHOSTKIT_API int __cdecl ll_set_text_file(const char* path);
