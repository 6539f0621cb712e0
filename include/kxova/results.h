/* Result codes of the interface.
 *
 * Every function that returns a result returns 0 for success. Codes below 8000 are Windows error numbers and keep
 * their meaning (<winerror.h>); codes from 8000 belong to the configuration component. A result of the server is
 * passed on unchanged, so a failure has the same number wherever it was found.
 *
 * Windows numbers that the library itself returns:
 *     30  ERROR_READ_FAULT             no server, no channel, or a reply of an unexpected kind
 *     87  ERROR_INVALID_PARAMETER      a required argument is NULL or empty
 *    111  ERROR_BUFFER_OVERFLOW        a request does not fit 8192 bytes, or a reply ends before its fields do
 *    120  ERROR_CALL_NOT_IMPLEMENTED   the function exists for old callers only
 *    233  ERROR_PIPE_NOT_CONNECTED     the server's registry pipe cannot be reached
 */
#ifndef KXOVA_RESULTS_H
#define KXOVA_RESULTS_H

enum kxova_result {
    DCFG_ERR_BUFFER_TOO_SHORT = 234, /* the caller's buffer cannot hold the text (ERROR_MORE_DATA) */
    DCFG_ERR_NO_MORE_ITEMS = 259,    /* an enumeration index lies past the last item (ERROR_NO_MORE_ITEMS) */
    DCFG_ERR_NOT_FOUND = 8012,       /* the named device, name, definition, board or protocol does not exist */
    DCFG_ERR_NOT_SUPPORTED = 8018,   /* the entry point is kept for old callers and does nothing */
    DCFG_ERR_DELETE_DISABLED = 8022, /* the logical name's "enable_delete" is not "true" */
    DCFG_VALUE_NOT_IN_ENUM = 8050,   /* value check: not in the parameter's list */
    DCFG_VALUE_NOT_BOOL = 8052,      /* value check: neither "true" nor "false" */
    DCFG_SET_VAL_LESS_THAN_MIN = 8054,
    DCFG_SET_VAL_BIGGER_THAN_MAX = 8056,
    DCFG_NOT_IN_STEP = 8058,        /* value check: not on the step grid that starts at the minimum */
    DCFG_PROFILE_NO_VALUE = 8062,   /* a bus profile has no such value, or it could not be set */
    DCFG_ERR_CALL_DLL = 8100,       /* the property-sheet library of a logical device could not be called */
    DCFG_ERR_CANT_FIND_DLL = 8102,  /* an extension library was not found, or its name holds a path */
    DCFG_ERR_CANT_START_DLL = 8104, /* an extension library lacks the function that was to be called */
    DCFG_INVALID_RESPONSE = 8621    /* a reply of an unexpected kind */
};

#endif
