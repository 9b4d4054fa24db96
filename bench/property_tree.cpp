// Times the property tree on trees of 1,000, 10,000 and 50,000 rows in nested groups:
// insertion, the first paint, expanding everything, painting the first screen and the middle
// of the open tree, collapsing everything and destroying it. Prints milliseconds per
// operation and microseconds per row.
//
//   bench_property_tree.exe [--repeat N]
//
// Paints are timed as a real WM_PAINT of the whole list (invalidate, then UpdateWindow), and
// repeated N times (default 20) to average them.
#include "propertytree.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <string>
#include <vector>

#include "benchclock.h"

namespace
{
using bench::Now;

// A value row as a host would have one: a text in the value column, widening the column.
class TextRow : public CKelPropertyTreeItem
{
public:
    explicit TextRow(int n)
    {
        char label[32];
        sprintf(label, "Attribute %d", n);
        SetLabelText(label);
        sprintf(m_value, "%d.%02d m", n / 100, n % 100);
    }
    void DrawAttribute(CDC* pDC, const RECT& rc) override
    {
        RECT text = rc;
        pDC->DrawText(m_value, -1, &text, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
        if (GetItemOwner())
            GetItemOwner()->SetInfoColMaxVisibleWidth(pDC->GetTextExtent(m_value, static_cast<int>(strlen(m_value))).cx);
    }

private:
    char m_value[32];
};

class Host : public CWnd
{
public:
    bool Make() { return CreateEx(0, nullptr, "bench", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 420, 640, nullptr, nullptr) != FALSE; }
};

// Groups of 100 rows: a top-level group, 9 subgroups, 10 value rows in each subgroup.
void Fill(CKelPropertyTree& tree, int rows)
{
    int n = 0;
    while (n < rows)
    {
        CKelPropertyTreeItem* group = new CKelPropertyTreeItem();
        group->SetLabelText("Group");
        tree.InsertItem(group);
        ++n;
        for (int s = 0; s < 9 && n < rows; ++s)
        {
            CKelPropertyTreeItem* sub = new CKelPropertyTreeItem();
            sub->SetLabelText("Subgroup");
            tree.InsertItem(sub, group);
            ++n;
            for (int v = 0; v < 10 && n < rows; ++v, ++n)
                tree.InsertItem(new TextRow(n), sub);
        }
    }
}

void PaintNow(CKelPropertyTreeList* list)
{
    list->Invalidate();
    list->UpdateWindow();
}

struct Row
{
    int rows = 0;
    double insert = 0, firstPaint = 0, expandAll = 0, paintTop = 0, paintMiddle = 0, collapseAll = 0,
           paintCollapsed = 0, destroy = 0;
    int visible = 0;
};

Row Measure(int rows, int repeat)
{
    Row r;
    r.rows = rows;
    Host host;
    host.Make();
    CKelPropertyTree* tree = new CKelPropertyTree();
    tree->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 400, 600), &host, 1);
    CKelPropertyTreeList* list = tree->GetCtrlParent();

    double t = Now();
    Fill(*tree, rows);
    r.insert = Now() - t;

    t = Now();
    tree->SetPopulated(1);
    tree->UpdatedItems();
    PaintNow(list);
    r.firstPaint = Now() - t;

    t = Now();
    tree->ExpandAll(KPTEC_EXPAND, nullptr);
    r.expandAll = Now() - t;
    for (CKelPropertyTreeItem* p = tree->GetVisibleList(); p; p = p->GetNextVisible())
        ++r.visible;

    t = Now();
    for (int i = 0; i < repeat; ++i)
        PaintNow(list);
    r.paintTop = (Now() - t) / repeat;

    SCROLLINFO si = {};
    si.cbSize = sizeof(si);
    si.fMask = SIF_ALL;
    list->GetScrollInfo(SB_VERT, &si);
    const int middle = (si.nMax - static_cast<int>(si.nPage)) / 2;
    t = Now();
    for (int i = 0; i < repeat; ++i)
    {
        tree->SetOriginOffset(middle + (i % 2) * 21);
        list->SetScrollPos(SB_VERT, middle + (i % 2) * 21);
        PaintNow(list);
    }
    r.paintMiddle = (Now() - t) / repeat;

    t = Now();
    tree->ExpandAll(KPTEC_COLLAPSE, nullptr);
    r.collapseAll = Now() - t;

    t = Now();
    for (int i = 0; i < repeat; ++i)
        PaintNow(list);
    r.paintCollapsed = (Now() - t) / repeat;

    t = Now();
    tree->DestroyWindow();
    delete tree;
    r.destroy = Now() - t;
    host.DestroyWindow();
    return r;
}
}

int main(int argc, char** argv)
{
    int repeat = 20;
    for (int i = 1; i + 1 < argc; ++i)
        if (strcmp(argv[i], "--repeat") == 0)
            repeat = atoi(argv[i + 1]) > 0 ? atoi(argv[i + 1]) : repeat;

    const int sizes[] = {1000, 10000, 50000};
    // One unrecorded run first, so that the first recorded row does not pay for loading
    // fonts, classes and code.
    Measure(1000, 2);
    std::vector<Row> results;
    for (int n : sizes)
        results.push_back(Measure(n, repeat));

    printf("Property tree, 400 x 600 window, rows in groups of 100 (1 group, 9 subgroups, 90 values)\n");
    printf("paints averaged over %d runs; ms per operation, and microseconds per row in brackets\n\n", repeat);
    printf("%-34s", "operation");
    for (const Row& r : results)
        printf("%24d", r.rows);
    printf("\n");
    struct Line
    {
        const char* name;
        double Row::*field;
        bool perRow;
    } lines[] = {
        {"insert all rows (not yet shown)", &Row::insert, true},
        {"first paint, groups collapsed", &Row::firstPaint, false},
        {"expand all (with its paint)", &Row::expandAll, true},
        {"paint first screen, all open", &Row::paintTop, true},
        {"scroll to middle and paint", &Row::paintMiddle, true},
        {"collapse all (with its paint)", &Row::collapseAll, true},
        {"paint first screen, collapsed", &Row::paintCollapsed, false},
        {"destroy the tree", &Row::destroy, true},
    };
    for (const Line& line : lines)
    {
        printf("%-34s", line.name);
        for (const Row& r : results)
        {
            char cell[64];
            if (line.perRow)
                sprintf(cell, "%.2f (%.3f)", r.*(line.field), 1000.0 * (r.*(line.field)) / r.rows);
            else
                sprintf(cell, "%.2f", r.*(line.field));
            printf("%24s", cell);
        }
        printf("\n");
    }
    printf("%-34s", "rows on the visible list, open");
    for (const Row& r : results)
        printf("%24d", r.visible);
    printf("\n");
    return 0;
}
