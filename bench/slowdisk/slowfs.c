// A read-only FUSE file system that passes a folder through and waits a fixed time on every
// open and every read, as a USB hard drive or a network share does. The benchmark mounts it to
// measure ingest where each request costs milliseconds instead of microseconds.
//
//   slowfs SOURCE MOUNTPOINT DELAY_US [fuse options…]
#define FUSE_USE_VERSION 31
#define _GNU_SOURCE

#include <fuse3/fuse.h>

#include <dirent.h>
#include <errno.h>
#include <fcntl.h>
#include <limits.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

static int g_source = -1; // the passed-through folder, opened once
static long g_delayUs = 0;

static void wait_delay(void)
{
    struct timespec t = {g_delayUs / 1000000, (g_delayUs % 1000000) * 1000};
    while (nanosleep(&t, &t) != 0 && errno == EINTR) {
    }
}

// FUSE paths start with "/"; openat() below the source folder wants them relative.
static const char *relative(const char *path)
{
    while (*path == '/')
        ++path;
    return *path ? path : ".";
}

static void *slow_init(struct fuse_conn_info *conn, struct fuse_config *config)
{
    (void)conn;
    // Keep attributes and cached pages across opens, as NFS does when a file has not changed
    // (close-to-open consistency): what one open read stays readable for the next.
    config->kernel_cache = 1;
    config->attr_timeout = 60;
    config->entry_timeout = 60;
    config->use_ino = 0;
    return NULL;
}

static int slow_getattr(const char *path, struct stat *st, struct fuse_file_info *fi)
{
    if (fi && fstat((int)fi->fh, st) == 0)
        return 0;
    return fstatat(g_source, relative(path), st, AT_SYMLINK_NOFOLLOW) == 0 ? 0 : -errno;
}

static int slow_readdir(const char *path, void *buffer, fuse_fill_dir_t fill, off_t offset,
                        struct fuse_file_info *fi, enum fuse_readdir_flags flags)
{
    (void)offset, (void)fi, (void)flags;
    const int fd = openat(g_source, relative(path), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return -errno;
    DIR *dir = fdopendir(fd);
    if (!dir) {
        close(fd);
        return -errno;
    }
    struct dirent *entry;
    while ((entry = readdir(dir)) != NULL) {
        struct stat st = {0};
        st.st_ino = entry->d_ino;
        st.st_mode = (mode_t)DTTOIF(entry->d_type);
        if (fill(buffer, entry->d_name, &st, 0, 0))
            break;
    }
    closedir(dir);
    return 0;
}

static int slow_open(const char *path, struct fuse_file_info *fi)
{
    if ((fi->flags & O_ACCMODE) != O_RDONLY)
        return -EROFS;
    wait_delay();
    const int fd = openat(g_source, relative(path), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return -errno;
    fi->fh = (uint64_t)fd;
    fi->keep_cache = 1;
    return 0;
}

static int slow_read(const char *path, char *buffer, size_t size, off_t offset,
                     struct fuse_file_info *fi)
{
    (void)path;
    wait_delay();
    const ssize_t n = pread((int)fi->fh, buffer, size, offset);
    return n < 0 ? -errno : (int)n;
}

static int slow_release(const char *path, struct fuse_file_info *fi)
{
    (void)path;
    close((int)fi->fh);
    return 0;
}

static int slow_statfs(const char *path, struct statvfs *st)
{
    (void)path;
    return fstatvfs(g_source, st) == 0 ? 0 : -errno;
}

static const struct fuse_operations kOperations = {
    .getattr = slow_getattr,
    .open = slow_open,
    .read = slow_read,
    .statfs = slow_statfs,
    .release = slow_release,
    .readdir = slow_readdir,
    .init = slow_init,
};

int main(int argc, char **argv)
{
    if (argc < 4) {
        fprintf(stderr, "usage: %s SOURCE MOUNTPOINT DELAY_US [fuse options…]\n", argv[0]);
        return 2;
    }
    g_source = open(argv[1], O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (g_source < 0) {
        perror(argv[1]);
        return 1;
    }
    g_delayUs = strtol(argv[3], NULL, 10);
    // fuse_main wants: program, mount point, then its own options.
    char *args[64];
    int count = 0;
    args[count++] = argv[0];
    args[count++] = argv[2];
    args[count++] = "-oro,default_permissions";
    for (int i = 4; i < argc && count < 63; ++i)
        args[count++] = argv[i];
    args[count] = NULL;
    return fuse_main(count, args, &kOperations, NULL);
}
