// Library start and stop.

#include "channel/kxovacpipe.h"
#include "channel/kxOvascp.h"
#include "channel/ovaScpLock.h"
#include "kxframework.h"
#include "Kxotrc.h"

namespace {

// Kernel objects that processes of different users share are open to everyone.
class OpenSecurity
{
 public:
    bool build() noexcept
    {
        if (!InitializeSecurityDescriptor(&descriptor_, SECURITY_DESCRIPTOR_REVISION)) return false;
        if (!SetSecurityDescriptorDacl(&descriptor_, TRUE, nullptr, FALSE)) return false;
        attributes_ = {sizeof attributes_, &descriptor_, TRUE};
        return true;
    }
    SECURITY_ATTRIBUTES* get() noexcept { return &attributes_; }

 private:
    SECURITY_DESCRIPTOR descriptor_ = {};
    SECURITY_ATTRIBUTES attributes_ = {};
};

class OvaApiApp : public CWinApp
{
 public:
    BOOL InitInstance() override
    {
        if (!security_.build()) return FALSE;
        TrcStart(security_.get());
        KXTRACE("InitInstance: ", TRC_ENTRY, ">> start");
        setPipeSecurity(security_.get());
        createOvaScpLock();
        return CWinApp::InitInstance();
    }

    int ExitInstance() override
    {
        KXTRACE("ExitInstance: ", TRC_ENTRY, "==> Ende des CFP-API");
        kxOvascp::destroy();
        destroyPipeClient();
        closeOvaScpLock();
        TrcStop();
        return CWinApp::ExitInstance();
    }

 private:
    OpenSecurity security_;
};

OvaApiApp theApp;

}  // namespace
