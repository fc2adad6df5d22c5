#pragma once

#include <QtGlobal>

/// Lets all threads take memory from one heap: call first in `main`, before any thread is made. The heap that
/// a thread gets of its own grows page by page, and the thread that loads a library spends a fifth of its
/// time on that. Does nothing where the machine has no such choice.
void shareOneHeap();

/// Tells that about so many bytes will soon be asked for in small pieces, so that the machine can give them
/// in large pages. Changes the speed and nothing else: a guess too high costs address space, no memory. Does
/// nothing on a thread with a heap of its own. Any thread.
void makeHeapRoom(qint64 bytes);

/// Gives the memory that is free by now back to the machine: for a program that goes on for long after one
/// large job. Any thread.
void giveBackHeapRoom();
