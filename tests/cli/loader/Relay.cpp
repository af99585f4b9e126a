// Needs another library, and hands on what that says.

extern "C" const char *KVSYNC_TEST_CALLEE();

extern "C" const char *KVSYNC_TEST_NAME()
{
    return KVSYNC_TEST_CALLEE();
}
