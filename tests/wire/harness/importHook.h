// Stands in for a system function that the library imports, for as long as the object lives. Other modules keep the
// system's own.
#pragma once

class ImportHook
{
 public:
    // Throws when the library imports no such function.
    template <typename Function>
    ImportHook(const char* function, Function* replacement)
        : ImportHook(function, reinterpret_cast<const void*>(replacement))
    {}
    ImportHook(const char* function, const void* replacement);
    ~ImportHook() { set(original_); }
    ImportHook(const ImportHook&) = delete;
    ImportHook& operator=(const ImportHook&) = delete;

 private:
    void set(const void* target) const;

    const void** slot_;
    const void* original_;
};
