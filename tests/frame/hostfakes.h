// Fake host entries for the frame tests: two complete sets with distinct addresses, records
// built from them, and a view of the library's fifteen entry variables.
#pragma once
#include "hostentries.h"

#include <array>

namespace frame_test
{
const int kEntryCount = 15;

// The fifteen entry variables of the library as addresses, word 2 first.
typedef std::array<const void*, kEntryCount> EntryValues;
EntryValues CurrentEntries();
// The entries of a record, word 2 first.
EntryValues RecordEntries(const KelWinCtrlInitRecord& record);

// A record of the current size and version holding every entry of set A or of set B. The
// two sets share no address, and none is null.
KelWinCtrlInitRecord FullRecordA();
KelWinCtrlInitRecord FullRecordB();
// A record of the current size and version with all entries null.
KelWinCtrlInitRecord EmptyRecord();
// Copies the entry of `word` (2..16) from one record into another.
void CopyWord(KelWinCtrlInitRecord& to, const KelWinCtrlInitRecord& from, int word);

// The entries as they were when the test program started, before any test ran.
const EntryValues& EntriesAtStart();
}
