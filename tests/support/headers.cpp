// Nothing but its precompiled headers.
