#include "SyncObjects.h"

CSyncObject::~CSyncObject()
{
    if (m_hObject) CloseHandle(m_hObject);
}

BOOL CSyncObject::Lock(DWORD timeout)
{
    const DWORD result = WaitForSingleObject(m_hObject, timeout);
    return result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
}

CCriticalSection::CCriticalSection() noexcept
{
    InitializeCriticalSection(&m_sect);
}

CCriticalSection::~CCriticalSection()
{
    DeleteCriticalSection(&m_sect);
}

BOOL CCriticalSection::Lock(DWORD)
{
    EnterCriticalSection(&m_sect);
    return TRUE;
}

BOOL CCriticalSection::Unlock()
{
    LeaveCriticalSection(&m_sect);
    return TRUE;
}

CMutex::CMutex(BOOL initiallyOwned, const char* name, SECURITY_ATTRIBUTES* attributes) noexcept
{
    m_hObject = CreateMutexA(attributes, initiallyOwned, name);
}

BOOL CMutex::Unlock()
{
    return ReleaseMutex(m_hObject);
}

CSingleLock::CSingleLock(CSyncObject* object, BOOL initialLock) : m_pObject(object)
{
    if (initialLock) Lock();
}

BOOL CSingleLock::Lock(DWORD timeout)
{
    if (!m_bAcquired && m_pObject) m_bAcquired = m_pObject->Lock(timeout);
    return m_bAcquired;
}

BOOL CSingleLock::Unlock()
{
    if (!m_bAcquired) return FALSE;
    m_bAcquired = !m_pObject->Unlock();
    return !m_bAcquired;
}
