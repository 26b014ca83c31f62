// Stands in place of the system's in its program: a file system without locks, such as some of networks.
#include <errno.h>
#include <sys/file.h>

int flock(int file, int operation)
{
    (void)file;
    (void)operation;
    errno = ENOLCK;
    return -1;
}
