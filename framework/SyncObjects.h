// Locks, and CSingleLock, which holds one for the duration of a block.
#pragma once

#include <windows.h>

class CSyncObject
{
 public:
    CSyncObject() noexcept = default;
    CSyncObject(const CSyncObject&) = delete;
    CSyncObject& operator=(const CSyncObject&) = delete;
    virtual ~CSyncObject();

    // TRUE: held, also when its last owner ended without giving it back. The time-out is in milliseconds.
    virtual BOOL Lock(DWORD timeout = INFINITE);
    virtual BOOL Unlock() = 0;

    HANDLE m_hObject = nullptr;  // closed with the object
};

// Within one process; entering it again on the same thread nests. A time-out is not looked at: it waits until held.
class CCriticalSection : public CSyncObject
{
 public:
    CCriticalSection() noexcept;
    ~CCriticalSection() override;

    BOOL Lock(DWORD timeout = INFINITE) override;
    BOOL Unlock() override;

    CRITICAL_SECTION m_sect;
};

// A mutex, machine-wide when it has a name. When it cannot be made m_hObject is NULL and locking fails.
class CMutex : public CSyncObject
{
 public:
    explicit CMutex(BOOL initiallyOwned = FALSE, const char* name = nullptr,
                    SECURITY_ATTRIBUTES* attributes = nullptr) noexcept;

    BOOL Unlock() override;
};

class CSingleLock
{
 public:
    explicit CSingleLock(CSyncObject* object, BOOL initialLock = FALSE);  // object may be NULL: locking then fails
    CSingleLock(const CSingleLock&) = delete;
    CSingleLock& operator=(const CSingleLock&) = delete;
    ~CSingleLock() { Unlock(); }

    BOOL Lock(DWORD timeout = INFINITE);  // TRUE: held; a lock that this object holds already is not taken twice
    BOOL Unlock();                        // FALSE: it was not held
    BOOL IsLocked() const noexcept { return m_bAcquired; }

 private:
    CSyncObject* m_pObject;
    BOOL m_bAcquired = FALSE;
};
