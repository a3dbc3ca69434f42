#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

/// The program's connection to the X server, or null on other window systems.
xcb_connection_t* x11Connection();

/// The root window of the first screen.
xcb_window_t rootOf(xcb_connection_t* connection);

/// Who owns a selection, by the atom of its name; XCB_WINDOW_NONE for nobody. Waits for the answer.
xcb_window_t ownerOf(xcb_connection_t* connection, xcb_atom_t selection);

/// Replies of the X server belong to the caller.
template <typename Reply>
std::unique_ptr<Reply, decltype(&std::free)> owned(Reply* reply)
{
    return {reply, &std::free};
}
