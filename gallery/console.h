// Lines to the program's standard output and error. The gallery is a GUI program; started
// from a console without redirection it writes to the console of its parent.
#pragma once
#include <string>

void WriteOutputLine(const std::string& text);
// A message of the gallery, named as such; plain lines (such as the usage) go as they are.
void WriteErrorLine(const std::string& text);
void WritePlainErrorLine(const std::string& text);

// A wide string (a path) in the system code page, for messages.
std::string NarrowText(const std::wstring& text);
