// Times the tree engine's model against the stock SysTreeView32 on the same work, in one run,
// and prints a table of milliseconds with the ratio engine / stock for each row.
//
//   bench_tree_model.exe [--budget SECONDS]
//
// An insertion row that runs past the budget (default 20 s) stops there and says how far it
// got, so that one slow case cannot hold up the whole table; the ratio of such a row compares
// the time per inserted item.
#include "treeview.h"

#include <windows.h>
#include <commctrl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <random>
#include <string>
#include <vector>

#include "benchclock.h"

namespace
{
using bench::Now;

double g_budgetMs = 20000.0;

struct Result
{
    double ms = 0;
    size_t items = 0;  // items inserted (insertion rows only)
    std::string note;  // set when a row stopped early
};

enum class Kind
{
    Engine,
    Stock
};

const DWORD kTreeStyle = WS_CHILD | WS_VISIBLE | WS_BORDER | TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT;

HWND MakeTree(Kind kind, HWND parent)
{
    HINSTANCE instance = GetModuleHandleA(nullptr);
    if (kind == Kind::Engine)
        return CreateRGTree(kTreeStyle, 0, 0, 300, 400, parent, reinterpret_cast<HMENU>(1), instance, nullptr);
    return CreateWindowExA(0, WC_TREEVIEWA, nullptr, kTreeStyle, 0, 0, 300, 400, parent, reinterpret_cast<HMENU>(1),
                           instance, nullptr);
}

// The labels are the same for both trees; random numbers give the sort some work.
std::vector<std::string> MakeLabels(size_t count)
{
    std::mt19937 rng(7u);
    std::vector<std::string> labels(count);
    char text[32];
    for (size_t i = 0; i < count; ++i)
    {
        snprintf(text, sizeof(text), "Item %07u", static_cast<unsigned>(rng() % 10000000u));
        labels[i] = text;
    }
    return labels;
}

HTREEITEM InsertOne(HWND tree, HTREEITEM parent, const std::string& label)
{
    TVINSERTSTRUCTA ins = {};
    ins.hParent = parent;
    ins.hInsertAfter = TVI_LAST;
    ins.item.mask = TVIF_TEXT | TVIF_PARAM;
    ins.item.pszText = const_cast<char*>(label.c_str());
    ins.item.lParam = 1;
    return reinterpret_cast<HTREEITEM>(SendMessageA(tree, TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&ins)));
}

// Inserts `parents` top-level items with `children` each (children 0: a flat list of
// `parents` items). Returns the time; stops at the budget and notes how far it came.
Result Fill(HWND tree, const std::vector<std::string>& labels, int parents, int children, bool redraw,
            std::vector<HTREEITEM>* tops)
{
    Result r;
    size_t next = 0;
    const size_t total = static_cast<size_t>(parents) * static_cast<size_t>(children > 0 ? children + 1 : 1);
    if (!redraw)
        SendMessageA(tree, WM_SETREDRAW, FALSE, 0);
    const double start = Now();
    for (int p = 0; p < parents; ++p)
    {
        HTREEITEM top = InsertOne(tree, TVI_ROOT, labels[next++ % labels.size()]);
        if (tops)
            tops->push_back(top);
        for (int c = 0; c < children; ++c)
            InsertOne(tree, top, labels[next++ % labels.size()]);
        if (Now() - start > g_budgetMs && next < total)
        {
            char note[96];
            snprintf(note, sizeof(note), "stopped at %u of %u items", static_cast<unsigned>(next),
                     static_cast<unsigned>(total));
            r.note = note;
            break;
        }
    }
    if (!redraw)
        SendMessageA(tree, WM_SETREDRAW, TRUE, 0);
    r.ms = Now() - start;
    r.items = next;
    return r;
}

struct Row
{
    std::string name;
    Result engine;
    Result stock;
};

void Pump()
{
    MSG msg;
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE))
    {
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
    }
}

// The insertion rows: a fresh tree for each, destroyed (untimed) afterwards.
Result InsertRow(Kind kind, HWND parent, const std::vector<std::string>& labels, int parents, int children,
                 bool redraw)
{
    HWND tree = MakeTree(kind, parent);
    Result r = Fill(tree, labels, parents, children, redraw, nullptr);
    Pump();
    SendMessageA(tree, WM_SETREDRAW, FALSE, 0);
    DestroyWindow(tree);
    Pump();
    return r;
}

// The rows on one tree of 100 parents with 1,000 children each.
void WorkRows(Kind kind, HWND parent, const std::vector<std::string>& labels, std::vector<Row>& rows, size_t first)
{
    HWND tree = MakeTree(kind, parent);
    std::vector<HTREEITEM> tops;
    Fill(tree, labels, 100, 1000, false, &tops);
    Pump();
    auto put = [&](size_t index, double ms) {
        (kind == Kind::Engine ? rows[first + index].engine : rows[first + index].stock).ms = ms;
    };

    double start = Now();
    for (HTREEITEM top : tops)
        SendMessageA(tree, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(top));
    put(0, Now() - start);
    Pump();

    start = Now();
    size_t walked = 0;
    for (HTREEITEM it = reinterpret_cast<HTREEITEM>(SendMessageA(tree, TVM_GETNEXTITEM, TVGN_ROOT, 0)); it;
         it = reinterpret_cast<HTREEITEM>(
             SendMessageA(tree, TVM_GETNEXTITEM, TVGN_NEXTVISIBLE, reinterpret_cast<LPARAM>(it))))
        ++walked;
    put(1, Now() - start);
    if (walked != 100100)
        fprintf(stderr, "warning: walked %u rows, expected 100100\n", static_cast<unsigned>(walked));

    // A row three pages below the window, from a top row in the middle of the tree.
    const int page = static_cast<int>(SendMessageA(tree, TVM_GETVISIBLECOUNT, 0, 0));
    HTREEITEM top = tops[50];
    SendMessageA(tree, TVM_SELECTITEM, TVGN_FIRSTVISIBLE, reinterpret_cast<LPARAM>(top));
    HTREEITEM target = reinterpret_cast<HTREEITEM>(SendMessageA(tree, TVM_GETNEXTITEM, TVGN_FIRSTVISIBLE, 0));
    for (int i = 0; i < 3 * page && target; ++i)
        target = reinterpret_cast<HTREEITEM>(
            SendMessageA(tree, TVM_GETNEXTITEM, TVGN_NEXTVISIBLE, reinterpret_cast<LPARAM>(target)));
    start = Now();
    LONG lastTop = 0;
    for (int i = 0; i < 1000; ++i)
    {
        RECT rc = {};
        memcpy(&rc, &target, sizeof(target));
        SendMessageA(tree, TVM_GETITEMRECT, FALSE, reinterpret_cast<LPARAM>(&rc));
        lastTop = rc.top;
    }
    put(2, Now() - start);
    const int height = static_cast<int>(SendMessageA(tree, TVM_GETITEMHEIGHT, 0, 0));
    if (lastTop != 3 * page * height)
        fprintf(stderr, "warning: %s row 3 pages down has top %ld, expected %d\n",
                kind == Kind::Engine ? "engine" : "stock", static_cast<long>(lastTop), 3 * page * height);
    Pump();

    start = Now();
    SendMessageA(tree, TVM_SORTCHILDREN, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    put(3, Now() - start);
    Pump();

    start = Now();
    SendMessageA(tree, TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    put(4, Now() - start);
    Pump();
    DestroyWindow(tree);
    Pump();
}

std::string Cell(const Result& r)
{
    char text[64];
    snprintf(text, sizeof(text), "%10.1f%s", r.ms, r.note.empty() ? "" : "*");
    return text;
}
} // namespace

int main(int argc, char** argv)
{
    for (int i = 1; i + 1 < argc; ++i)
        if (strcmp(argv[i], "--budget") == 0)
            g_budgetMs = atof(argv[i + 1]) * 1000.0;

    INITCOMMONCONTROLSEX icc = {sizeof(icc), ICC_TREEVIEW_CLASSES};
    InitCommonControlsEx(&icc);
    HWND frame = CreateWindowExA(0, "STATIC", "bench", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 340, 460, nullptr,
                                 nullptr, GetModuleHandleA(nullptr), nullptr);
    Pump();

    const std::vector<std::string> labels = MakeLabels(100100);
    std::vector<Row> rows;
    struct InsertCase
    {
        const char* name;
        int parents, children;
        bool redraw;
    };
    const InsertCase cases[] = {
        {"insert 10,000 flat, redraw off", 10000, 0, false},
        {"insert 10,000 flat, redraw on", 10000, 0, true},
        {"insert 100,000 flat, redraw off", 100000, 0, false},
        {"insert 100,000 flat, redraw on", 100000, 0, true},
        {"insert 100 x 1,000, redraw off", 100, 1000, false},
        {"insert 100 x 1,000, redraw on", 100, 1000, true},
    };
    for (const InsertCase& c : cases)
    {
        Row row;
        row.name = c.name;
        row.engine = InsertRow(Kind::Engine, frame, labels, c.parents, c.children, c.redraw);
        row.stock = InsertRow(Kind::Stock, frame, labels, c.parents, c.children, c.redraw);
        rows.push_back(row);
        fprintf(stderr, "done: %s\n", c.name);
    }
    const size_t first = rows.size();
    for (const char* name : {"expand all 100 parents (100,100 rows)", "walk all rows by TVGN_NEXTVISIBLE",
                             "TVM_GETITEMRECT 3 pages below, x1000", "sort the root (100 parents)",
                             "delete all (100,100 items)"})
        rows.push_back(Row{name, {}, {}});
    WorkRows(Kind::Engine, frame, labels, rows, first);
    WorkRows(Kind::Stock, frame, labels, rows, first);

    printf("%-40s %12s %12s %14s\n", "operation", "engine ms", "stock ms", "engine/stock");
    for (const Row& row : rows)
    {
        double ratio = row.stock.ms > 0 ? row.engine.ms / row.stock.ms : 0.0;
        if ((!row.engine.note.empty() || !row.stock.note.empty()) && row.engine.items && row.stock.items)
            ratio = (row.engine.ms / static_cast<double>(row.engine.items)) /
                    (row.stock.ms / static_cast<double>(row.stock.items));
        printf("%-40s %12s %12s %14.3f\n", row.name.c_str(), Cell(row.engine).c_str(), Cell(row.stock).c_str(), ratio);
        if (!row.engine.note.empty())
            printf("    * engine %s (ratio per item)\n", row.engine.note.c_str());
        if (!row.stock.note.empty())
            printf("    * stock %s (ratio per item)\n", row.stock.note.c_str());
    }
    DestroyWindow(frame);
    return 0;
}
