/* KXONLINX.dll: carries frames to the configuration server and back.
 *
 * A channel is named; the server offers it under that name ("KXOVASCP" is the configuration server's). A handle that
 * SCP_openW gave stays valid until SCP_close, also when the server goes and comes back: the call that meets a lost
 * connection fails, the next one connects again.
 *
 * Every function may be called from any thread. Calls on one handle take turns; calls on different handles run beside
 * each other. Every call has one bound for all its waiting, 20 seconds unless the environment variable
 * KXONLINX_TIMEOUT_MS gives another number of milliseconds (1 to 86400000, read when a channel is opened).
 *
 * All functions use the C calling convention.
 */
#ifndef KXONLINX_H
#define KXONLINX_H

#include <wchar.h>
#include <windows.h>

#ifdef __cplusplus
extern "C" {
#endif

/* What SCP_get_errno gives. "Nothing sent" means that the server has not seen the request; after the other failures
 * of SCP_send_receive that follow a valid call, it may have carried the request out. */
enum kxonlinx_error {
    KXONLINX_OK = 0,
    KXONLINX_NOT_OPEN = 8801,          /* the handle was closed, before the call or while it waited */
    KXONLINX_BAD_HANDLE = 8802,        /* never a handle of this process */
    KXONLINX_BAD_ARGUMENT = 8803,      /* a NULL pointer, an unusable name, window, message number or capacity */
    KXONLINX_BAD_FRAME = 8804,         /* the request is no valid frame; nothing sent */
    KXONLINX_REPLY_TOO_LONG = 8805,    /* the reply does not fit the caller's buffer; it is dropped */
    KXONLINX_BAD_REPLY = 8806,         /* what came back is no valid reply to this request */
    KXONLINX_TIMED_OUT = 8807,         /* sent, but no reply within the bound */
    KXONLINX_CONNECTION_LOST = 8808,   /* the server closed the connection before it replied */
    KXONLINX_SERVER_ABSENT = 8809,     /* nobody offers a channel of this name; nothing sent */
    KXONLINX_SERVER_BUSY = 8810,       /* the server took no connection within the bound; nothing sent */
    KXONLINX_CHANNEL_BUSY = 8811,      /* other calls on this handle took the whole bound; nothing sent */
    KXONLINX_ACCESS_DENIED = 8812,     /* this user may not connect; nothing sent */
    KXONLINX_NOT_A_CHANNEL = 8813,     /* something else has the channel's name; nothing sent */
    KXONLINX_TOO_MANY_CHANNELS = 8814, /* 64 channels are open in this process */
    KXONLINX_OUT_OF_MEMORY = 8815,     /* memory or kernel objects are exhausted */
    KXONLINX_SYSTEM_ERROR = 8816       /* Windows refused an operation for no reason listed here */
};

/* Opens the channel `name` and connects to its server.
 * name: 1 to 247 characters without slash and backslash; not NULL.
 * Returns a handle (greater than 0), or -1; then SCP_get_errno tells why: BAD_ARGUMENT, SERVER_ABSENT, SERVER_BUSY,
 * ACCESS_DENIED, NOT_A_CHANNEL, CONNECTION_LOST, TOO_MANY_CHANNELS, OUT_OF_MEMORY, SYSTEM_ERROR. */
int __cdecl SCP_openW(const wchar_t* name);

/* Sends one frame and waits for its reply.
 * handle: from SCP_openW.
 * frameLength, frame: the request in bytes, 82 to 8272: the 80-byte header and at least an operation code. Read only.
 * replyCapacity, reply: the room for the reply in bytes, at least 80; 8272 holds every reply. May be the same memory
 * as frame.
 * replyLength: receives the reply's length in bytes; its value before the call does not matter. Not NULL.
 * Returns 0, or -1; then reply and *replyLength are as they were, and SCP_get_errno tells why: every code but
 * TOO_MANY_CHANNELS is possible. A request that may have reached the server is never sent a second time. */
int __cdecl SCP_send_receive(int handle, unsigned short frameLength, void* frame, unsigned short replyCapacity,
                             void* reply, unsigned short* replyLength);

/* How the calling thread's last SCP_openW, SCP_send_receive, SCP_close or SetNorixHWndMsg ended: 0 after success,
 * else one of kxonlinx_error. */
int __cdecl SCP_get_errno(void);

/* Closes the channel. Calls that other threads have under way on it end at once with NOT_OPEN.
 * Returns 0, or -1 (NOT_OPEN, BAD_HANDLE). */
int __cdecl SCP_close(int handle);

/* Names the window that is to get the server's notifications for this channel; a later call replaces the earlier one,
 * SCP_close ends it.
 * window: a window of this process. message: the message number to post, 1024 to 65535.
 * Returns 0, or -1 (NOT_OPEN, BAD_HANDLE, BAD_ARGUMENT). */
int __cdecl SetNorixHWndMsg(int handle, HWND window, UINT message);

/* 1 when a server can be reached at this moment, by one of the channels that this process has open or by the channel
 * "KXOVASCP"; else 0. Makes no connection and leaves the number that SCP_get_errno gives alone. */
int __cdecl OnlDll_CheckDevOpen(void);

#ifdef __cplusplus
}
#endif

#endif
