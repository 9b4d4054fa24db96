// The host's text table: texts by number from a plain text file, with parameter blocks.
#include "textlib.h"

#include <cstdio>
#include <cstdlib>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace
{
const char kParameterEnd = 30;  // ends each value of a parameter block
const char kBlockEnd = 31;      // two of them end the block

struct TextTable
{
    std::mutex lock;
    bool loaded = false;
    bool hasPath = false;        // a path was set by the host
    std::string path;
    std::map<uint32_t, std::string> texts;
};

TextTable& Table()
{
    static TextTable table;
    return table;
}

// KelHostKit.txt in the folder of this DLL.
std::string DefaultPath()
{
    HMODULE module = nullptr;
    ::GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                         reinterpret_cast<LPCSTR>(&DefaultPath), &module);
    char file[MAX_PATH] = {0};
    const DWORD n = ::GetModuleFileNameA(module, file, MAX_PATH);
    std::string path(file, n);
    const size_t slash = path.find_last_of("\\/");
    path = slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
    return path + "KelHostKit.txt";
}

// "\n", "\t" and "\\" of the file's notation.
std::string Unescape(const std::string& raw)
{
    std::string text;
    for (size_t i = 0; i < raw.size(); ++i)
    {
        if (raw[i] == '\\' && i + 1 < raw.size())
        {
            const char next = raw[i + 1];
            if (next == 'n' || next == 't' || next == '\\')
            {
                text += next == 'n' ? '\n' : (next == 't' ? '\t' : '\\');
                ++i;
                continue;
            }
        }
        text += raw[i];
    }
    return text;
}

// Reads "number<TAB>text" lines; false when the file cannot be opened.
bool Load(const std::string& path, std::map<uint32_t, std::string>& texts)
{
    texts.clear();
    FILE* file = std::fopen(path.c_str(), "rb");
    if (file == nullptr)
        return false;
    std::string content;
    char chunk[4096];
    size_t got = 0;
    while ((got = std::fread(chunk, 1, sizeof(chunk), file)) > 0)
        content.append(chunk, got);
    std::fclose(file);

    size_t start = 0;
    while (start < content.size())
    {
        size_t end = content.find('\n', start);
        if (end == std::string::npos)
            end = content.size();
        std::string line = content.substr(start, end - start);
        start = end + 1;
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (line.empty() || line[0] == '#')
            continue;
        const size_t tab = line.find('\t');
        if (tab == std::string::npos || tab == 0)
            continue;
        const std::string digits = line.substr(0, tab);
        if (digits.find_first_not_of("0123456789") != std::string::npos || digits.size() > 10)
            continue;
        const unsigned long long number = std::strtoull(digits.c_str(), nullptr, 10);
        if (number > 0xFFFFFFFFull)
            continue;
        texts[static_cast<uint32_t>(number)] = Unescape(line.substr(tab + 1));
    }
    return true;
}

// The values of a parameter block, in order.
std::vector<std::string> SplitParameters(const char* block)
{
    std::vector<std::string> values;
    if (block == nullptr)
        return values;
    std::string current;
    for (const char* p = block; *p != '\0'; ++p)
    {
        if (*p == kBlockEnd)
            break;
        if (*p == kParameterEnd)
        {
            values.push_back(current);
            current.clear();
        }
        else
            current += *p;
    }
    return values;
}

std::string Substitute(const std::string& text, const std::vector<std::string>& values)
{
    std::string out;
    for (size_t i = 0; i < text.size(); ++i)
    {
        if (text[i] == '%' && i + 1 < text.size())
        {
            const char next = text[i + 1];
            if (next == '%')
            {
                out += '%';
                ++i;
                continue;
            }
            if (next >= '1' && next <= '9')
            {
                const size_t index = static_cast<size_t>(next - '1');
                if (index < values.size())
                    out += values[index];
                ++i;
                continue;
            }
        }
        out += text[i];
    }
    return out;
}

int GetText(uint32_t number, int capacity, const char* parameters, char* buffer, int* length, bool multiline)
{
    std::string text;
    bool found = false;
    {
        TextTable& table = Table();
        std::lock_guard<std::mutex> guard(table.lock);
        if (!table.loaded)
        {
            Load(table.hasPath ? table.path : DefaultPath(), table.texts);
            table.loaded = true;
        }
        const auto it = table.texts.find(number);
        if (it != table.texts.end())
        {
            text = it->second;
            found = true;
        }
    }
    text = Substitute(text, SplitParameters(parameters));
    if (!multiline)
        for (char& c : text)
            if (c == '\n')
                c = ' ';
    int written = 0;
    if (buffer != nullptr && capacity >= 0)
    {
        written = static_cast<int>(text.size()) < capacity ? static_cast<int>(text.size()) : capacity;
        text.copy(buffer, static_cast<size_t>(written));
        buffer[written] = '\0';
    }
    if (length != nullptr)
        *length = written;
    return found ? 1 : 0;
}
}

int __cdecl ll_get_text(uint32_t number, int capacity, const char* parameters, char* buffer, int* length)
{
    return GetText(number, capacity, parameters, buffer, length, false);
}

int __cdecl ll_get_text_multiline(uint32_t number, int capacity, const char* parameters, char* buffer, int* length)
{
    return GetText(number, capacity, parameters, buffer, length, true);
}

int __cdecl ll_set_text_file(const char* path)
{
    TextTable& table = Table();
    std::lock_guard<std::mutex> guard(table.lock);
    table.hasPath = path != nullptr;
    table.path = path != nullptr ? path : std::string();
    const bool ok = Load(table.hasPath ? table.path : DefaultPath(), table.texts);
    table.loaded = true;
    return ok ? 1 : 0;
}
