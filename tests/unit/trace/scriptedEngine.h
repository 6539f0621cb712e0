// A trace engine that answers what a test tells it and keeps what it was given.
#pragma once

struct EngineScript
{
    // Told by the test
    int openResult;
    void* openHandle;  // what an opening leaves, whatever it returns
    int writeResult;

    // Seen
    int opens, writes, closes;
    char metaInfo[600], settings[600], folder[600], version[600];
    int openNumber;
    void* handleAtOpen;
    void* writeHandle;
    double writeTime;
    int writeNumber;
    unsigned char record[600];
    int recordLength;
    void* closeHandle;
};

using EngineScriptOf = EngineScript* (*)();  // exported as "Script"
