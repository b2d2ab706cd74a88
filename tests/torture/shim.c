/*
 * Preloaded into the sample host: its n-th call of one system function fails.
 *
 *   TORTURE_CALL   the function's name
 *   TORTURE_NTH    which call of it fails
 *   TORTURE_ERROR  the errno
 *   TORTURE_COUNT  a file that gets each function's name and number of calls at the program's end
 *
 * The counts begin with main: what the loader does is not the host's to survive. Clients that the
 * host starts are left alone.
 */
#define _GNU_SOURCE
#include <dirent.h>
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <pthread.h>
#include <signal.h>
#include <spawn.h>
#include <stdarg.h>
#include <stdatomic.h>
#include <stddef.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

static atomic_int counting;
static struct
{
    const char *name;
    atomic_long calls;
} functions[64];
static long nth;
static int error;
static char name[32];

__attribute__((constructor)) static void read_orders(void)
{
    const char *call = getenv("TORTURE_CALL");
    const char *number = getenv("TORTURE_NTH");
    const char *code = getenv("TORTURE_ERROR");
    if (call)
        strncpy(name, call, sizeof name - 1);
    nth = number ? atol(number) : 0;
    error = code ? atoi(code) : EIO;
    unsetenv("LD_PRELOAD");
}

/* Threads may come here at once: the first empty place is taken by comparison and exchange. */
static long next_call(const char *function)
{
    for (int i = 0; i < 64; ++i)
    {
        const char *none = NULL;
        __atomic_compare_exchange_n(&functions[i].name, &none, function, 0, __ATOMIC_SEQ_CST,
                                    __ATOMIC_SEQ_CST);
        if (strcmp(functions[i].name, function) == 0)
            return atomic_fetch_add(&functions[i].calls, 1) + 1;
    }
    abort();
}

static int fails(const char *function)
{
    if (!atomic_load(&counting))
        return 0;
    if (next_call(function) != nth || strcmp(function, name) != 0)
        return 0;
    errno = error;
    return 1;
}

static void tell_count(void)
{
    atomic_store(&counting, 0);
    const char *file = getenv("TORTURE_COUNT");
    if (!file)
        return;
    int descriptor = open(file, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    for (int i = 0; i < 64 && functions[i].name; ++i)
        dprintf(descriptor, "%s %ld\n", functions[i].name, atomic_load(&functions[i].calls));
    close(descriptor);
}

static int (*real_main)(int, char **, char **);

static int counted_main(int count, char **arguments, char **environment)
{
    atexit(tell_count);
    atomic_store(&counting, 1);
    return real_main(count, arguments, environment);
}

typedef int start_main(int (*)(int, char **, char **), int, char **, void (*)(void),
                       void (*)(void), void (*)(void), void *);

int __libc_start_main(int (*program)(int, char **, char **), int count, char **arguments,
                      void (*start)(void), void (*end)(void), void (*end_of_loader)(void),
                      void *stack)
{
    start_main *real = (start_main *)dlsym(RTLD_NEXT, "__libc_start_main");
    real_main = program;
    return real(counted_main, count, arguments, start, end, end_of_loader, stack);
}

#define REAL(function)                                                                             \
    static __typeof__(&function) real;                                                             \
    if (!real)                                                                                     \
    real = (__typeof__(&function))dlsym(RTLD_NEXT, #function)

/* FAILING(result, function, parameters, arguments, what it returns on failure) */
#define FAILING(type, function, parameters, arguments, failure)                                    \
    type function parameters                                                                       \
    {                                                                                              \
        REAL(function);                                                                            \
        return fails(#function) ? (failure) : real arguments;                                      \
    }

/* The C library's own, so that dlsym may allocate. */
extern void *__libc_malloc(size_t);
extern void *__libc_calloc(size_t, size_t);
extern void *__libc_realloc(void *, size_t);

void *malloc(size_t size)
{
    return fails("malloc") ? NULL : __libc_malloc(size);
}
void *calloc(size_t count, size_t size)
{
    return fails("calloc") ? NULL : __libc_calloc(count, size);
}
void *realloc(void *block, size_t size)
{
    return fails("realloc") ? NULL : __libc_realloc(block, size);
}

static mode_t mode_of(int flags, va_list list)
{
    return (flags & (O_CREAT | __O_TMPFILE)) != 0 ? va_arg(list, mode_t) : 0;
}

int open(const char *path, int flags, ...)
{
    REAL(open);
    va_list list;
    va_start(list, flags);
    mode_t mode = mode_of(flags, list);
    va_end(list);
    return fails("open") ? -1 : real(path, flags, mode);
}
int openat(int folder, const char *path, int flags, ...)
{
    REAL(openat);
    va_list list;
    va_start(list, flags);
    mode_t mode = mode_of(flags, list);
    va_end(list);
    return fails("openat") ? -1 : real(folder, path, flags, mode);
}
int fcntl(int descriptor, int command, ...)
{
    REAL(fcntl);
    va_list list;
    va_start(list, command);
    long argument = va_arg(list, long);
    va_end(list);
    return fails("fcntl") ? -1 : real(descriptor, command, argument);
}

/* What the compiler makes of calls whose buffers it knows the size of. */
extern int __open_2(const char *, int);
extern int __openat_2(int, const char *, int);
extern ssize_t __read_chk(int, void *, size_t, size_t);
int __open_2(const char *path, int flags)
{
    REAL(__open_2);
    return fails("open") ? -1 : real(path, flags);
}
int __openat_2(int folder, const char *path, int flags)
{
    REAL(__openat_2);
    return fails("openat") ? -1 : real(folder, path, flags);
}
ssize_t __read_chk(int descriptor, void *buffer, size_t size, size_t room)
{
    REAL(__read_chk);
    return fails("read") ? -1 : real(descriptor, buffer, size, room);
}

FAILING(ssize_t, read, (int d, void *b, size_t n), (d, b, n), -1)
FAILING(ssize_t, write, (int d, const void *b, size_t n), (d, b, n), -1)
FAILING(off_t, lseek, (int d, off_t o, int w), (d, o, w), -1)
FAILING(int, ftruncate, (int d, off_t n), (d, n), -1)
FAILING(int, fchmod, (int d, mode_t m), (d, m), -1)
FAILING(int, fchmodat, (int d, const char *p, mode_t m, int f), (d, p, m, f), -1)
FAILING(int, futimens, (int d, const struct timespec t[2]), (d, t), -1)
FAILING(int, stat, (const char *p, struct stat *s), (p, s), -1)
FAILING(int, lstat, (const char *p, struct stat *s), (p, s), -1)
FAILING(int, fstat, (int d, struct stat *s), (d, s), -1)
FAILING(int, fstatat, (int d, const char *p, struct stat *s, int f), (d, p, s, f), -1)
FAILING(int, statx, (int d, const char *p, int f, unsigned m, struct statx *s), (d, p, f, m, s), -1)
FAILING(int, access, (const char *p, int m), (p, m), -1)
FAILING(int, faccessat, (int d, const char *p, int m, int f), (d, p, m, f), -1)
FAILING(int, mkdir, (const char *p, mode_t m), (p, m), -1)
FAILING(int, rename, (const char *a, const char *b), (a, b), -1)
FAILING(int, unlink, (const char *p), (p), -1)
FAILING(int, unlinkat, (int d, const char *p, int f), (d, p, f), -1)
FAILING(int, rmdir, (const char *p), (p), -1)
FAILING(ssize_t, readlink, (const char *p, char *b, size_t n), (p, b, n), -1)
FAILING(ssize_t, copy_file_range, (int a, off_t *x, int b, off_t *y, size_t n, unsigned f),
        (a, x, b, y, n, f), -1)
FAILING(DIR *, opendir, (const char *p), (p), NULL)
FAILING(DIR *, fdopendir, (int d), (d), NULL)
FAILING(struct dirent *, readdir, (DIR *d), (d), NULL)
FAILING(ssize_t, getdents64, (int d, void *b, size_t n), (d, b, n), -1)
FAILING(int, pipe2, (int e[2], int f), (e, f), -1)
FAILING(int, pthread_create,
        (pthread_t *t, const pthread_attr_t *a, void *(*s)(void *), void *p), (t, a, s, p), error)
FAILING(int, posix_spawn,
        (pid_t *c, const char *p, const posix_spawn_file_actions_t *a, const posix_spawnattr_t *t,
         char *const *v, char *const *e),
        (c, p, a, t, v, e), error)
FAILING(int, posix_spawn_file_actions_adddup2, (posix_spawn_file_actions_t *a, int x, int y),
        (a, x, y), error)
FAILING(int, waitid, (idtype_t t, id_t i, siginfo_t *s, int o), (t, i, s, o), -1)
FAILING(void *, mmap, (void *a, size_t n, int p, int f, int d, off_t o), (a, n, p, f, d, o),
        MAP_FAILED)
FAILING(ssize_t, getrandom, (void *b, size_t n, unsigned f), (b, n, f), -1)
FAILING(char *, getcwd, (char *b, size_t n), (b, n), NULL)
