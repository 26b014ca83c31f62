// Replaces the system's function in this program, to simulate a file system without locks, such as some network ones.
#include <errno.h>
#include <sys/file.h>

int flock(int file, int operation)
{
    (void)file;
    (void)operation;
    errno = ENOLCK;
    return -1;
}
