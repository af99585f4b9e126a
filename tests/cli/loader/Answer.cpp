// Tells in which of the folders this library stands.

extern "C" const char *kvSyncTestAnswer()
{
    return KVSYNC_TEST_PLACE;
}
