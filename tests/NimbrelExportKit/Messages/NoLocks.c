// Replaces the system's function in this program: a file system without locks, like some network ones.
#include <errno.h>
#include <sys/file.h>

int flock(int file, int operation)
{
    (void)file;
    (void)operation;
    errno = ENOLCK;
    return -1;
}
