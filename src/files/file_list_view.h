// The list of the file dialog: a list view in report view that asks for each text when it paints it.
//
// Every operation takes the list view's window.
#pragma once

#include <cstdint>

#include "files/file_chooser.h"
#include "platform/handles.h"

namespace nira {

// Makes the columns and the images, and the rows high enough for a finger. The list owns the images from then
// on.
void SetUpFileList(WindowHandle list);

// Shows the listing, with its columns fitted to it. Entry `marked` (-1: none) is selected and in view; its
// name does not count as chosen by the person, so the list sends no notification that should be heeded before
// this returns.
void ShowFileList(WindowHandle list, const FolderListing& listing, int marked);

// Fits the columns to the list's width. Does nothing once the person has set widths of their own.
void FitFileColumns(WindowHandle list, const FolderListing& listing);

// The selected entry; -1 for none.
int SelectedEntry(WindowHandle list);

// Selects an entry and brings it into view; -1 selects none.
void SelectEntry(WindowHandle list, int index);

// Answers the list's question for the text and image of an entry (LVN_GETDISPINFOW; `notification` is its
// record).
void AnswerEntryText(const FolderListing& listing, intptr_t notification);

// Answers the search for a typed beginning (LVN_ODFINDITEMW): the index found or -1.
int AnswerTypedSearch(const FolderListing& listing, intptr_t notification);

}  // namespace nira
