// Ids of the library's string resources.
#pragma once

#define IDS_NO_SERVER 1001
#define IDS_NOT_FOUND 1002
#define IDS_DELETE_DISABLED 1003
#define IDS_VALUE_REFUSED 1004
#define IDS_LIBRARY_MISSING 1005
