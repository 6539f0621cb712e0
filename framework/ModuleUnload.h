// What the framework's loader entry needs of its other files.
#pragma once

void noteProcessIsEnding() noexcept;
void releaseModuleState() noexcept;  // the thread slot; the module's own state stays current

// Values of the compiler's thread-local variables (the exception handling's own among them), kept so that unloading
// releases those of every thread. False: there is no room for them in this process.
bool prepareThreadValues() noexcept;
void releaseThreadValues() noexcept;

// Lets the run-time do what it does once per module on the calling thread, now, so that no other thread meets it.
void warmUpRuntime() noexcept;
// Releases what the run-time keeps for the calling thread.
void releaseRuntimeThread() noexcept;
// Releases what the run-time keeps for the module. Nothing of the run-time may be used behind it.
void releaseRuntime() noexcept;
