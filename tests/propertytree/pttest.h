// Helpers of the property tree tests: counted rows, a recording parent and the row layout
// that painting writes.
#pragma once
#include <propertytree.h>

#include <functional>
#include <set>
#include <string>
#include <vector>

namespace pttest
{
// Notification codes as one line, for a mismatch message.
std::string Codes(const std::vector<unsigned>& codes);

// A row that counts its constructions and destructions, and remembers which rows died.
class CountedItem : public CKelPropertyTreeItem
{
public:
    explicit CountedItem(const char* label = "", int resID = 0)
    {
        SetLabelText(label);
        SetResID(resID);
        ++s_live;
        ++s_made;
        s_liveSet.insert(this);
    }
    ~CountedItem() override
    {
        --s_live;
        ++s_destroyedCount;
        // A row destroyed twice is no longer in the set of live rows the second time.
        if (s_liveSet.erase(this) == 0)
            ++s_doubleDestroyed;
        s_destroyed.insert(this);
    }
    static void Reset()
    {
        s_live = 0;
        s_made = 0;
        s_destroyedCount = 0;
        s_doubleDestroyed = 0;
        s_destroyed.clear();
        s_liveSet.clear();
    }
    static int s_live;
    static int s_made;
    static int s_destroyedCount;
    static int s_doubleDestroyed;
    static std::set<const void*> s_destroyed;   // every address a row died at
    static std::set<const void*> s_liveSet;
};

// A row with a value that records the protocol calls made on it.
class ValueItem : public CountedItem
{
public:
    explicit ValueItem(const char* label = "", int resID = 0) : CountedItem(label, resID) {}
    LONG_PTR GetItemValue() override { return m_value; }
    void SetItemValue(LONG_PTR value) override { m_value = value; }
    void* GetTypeIndependentItemValue() override { return &m_value; }
    void SetItemValue(void* p) override { m_value = *static_cast<LONG_PTR*>(p); }
    void OnActivate() override { calls.push_back("OnActivate"); m_working = m_value; }
    // Writes the working value to the caller's variable; a value that did not change is
    // no news for the parent.
    void OnCommit(int& notify) override
    {
        calls.push_back("OnCommit");
        m_undo = m_value;
        if (m_working == m_value)
            notify = 0;
        m_value = m_working;
        if (GetBoundVariable())
            *static_cast<LONG_PTR*>(GetBoundVariable()) = m_value;
    }
    void OnCancel() override { calls.push_back("OnCancel"); m_working = m_value; }
    void OnUndo() override { calls.push_back("OnUndo"); m_value = m_undo; }
    void OnRefresh() override { calls.push_back("OnRefresh"); }
    void OnMove() override { calls.push_back("OnMove"); }
    void Type(LONG_PTR v) { m_working = v; }

    std::vector<std::string> calls;
    LONG_PTR m_value = 0;
    LONG_PTR m_working = 0;
    LONG_PTR m_undo = 0;
};

// Lays the rows out as painting does: the visible list in drawing order, each row's
// location at its top in tree coordinates, 20 pixels a row, children of expanded rows only.
void LayoutRows(CKelPropertyTree& tree);

// A top-level window that records the WM_NOTIFY codes and exchange requests it receives.
class RecordingParent : public CWnd
{
public:
    bool CreateParent();
    std::vector<unsigned> codes;
    std::vector<CKelPropertyTreeItem*> items;
    std::vector<UINT_PTR> ids;
    std::vector<HWND> senders;
    int exchanges = 0;
    int rightDoubleClicks = 0;   // WM_RBUTTONDBLCLK handed on by the list
    int lastRequestedResID = -1;
    // Answers: a code listed here gets the answer non-zero.
    std::set<unsigned> refuse;
    std::set<CKelPropertyTreeItem*> keep;   // PTN_ITEM_DELETING refused for these rows
    DWORD omOptions = 0;
    CK_AttribSet* attribSet = nullptr;
    int externalFunction = 0;
    // Runs inside each WM_NOTIFY, so that a test can look at the tree at that moment.
    std::function<void(const PropertyTreeNotify*)> onNotify;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
};
}
