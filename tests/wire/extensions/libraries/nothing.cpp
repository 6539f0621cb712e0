// A library with none of the functions that are looked for.

extern "C" __declspec(dllexport) long SomethingElse()
{
    return 0;
}
