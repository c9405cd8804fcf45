// A library like many others: nothing in it says that it is a plugin.
extern "C" __attribute__((visibility("default"))) int answer()
{
    return 42;
}
