/* The clock of a pinned date for 32-bit wine, which reads the time through
 * glibc's 64-bit time functions (__clock_gettime64 and friends); faketime's
 * library wraps only the older names, so a 32-bit process would stay on the
 * real clock. Preloaded by cmake/wine32-run.sh when faketime has set FAKETIME.
 *
 * FAKETIME holds what `faketime DATE` puts there: the offset in seconds from
 * the real clock, and the clock keeps running from there. Only the calendar
 * clocks move; the monotonic ones stay, as the wine server measures its
 * waits by them. Built without the C library (raw system calls), so that it
 * can be preloaded ahead of it.
 *
 * The 64-bit build is empty: the preload path names this library through
 * $LIB, so the 64-bit wine server that a 32-bit client starts finds a library
 * of its own class, and neither loader complains. */
#if defined(__i386__)

typedef long long i64;
struct ts64 { i64 tv_sec; i64 tv_nsec; };
struct tv64 { i64 tv_sec; i64 tv_usec; };

enum { sys_clock_gettime64 = 403 };
enum { clock_realtime = 0, clock_realtime_coarse = 5, clock_realtime_alarm = 8, clock_tai = 11 };

static i64 offset_seconds;

static int real_clock_gettime(int clock, struct ts64* t)
{
    int r;
    __asm__ volatile("int $0x80" : "=a"(r) : "a"(sys_clock_gettime64), "b"(clock), "c"(t) : "memory");
    return r;
}

/* "[+-]digits"; anything else leaves the clock alone (the wrapper refuses
 * other forms before it gets here). */
static int parse_offset(const char* s, i64* out)
{
    int negative = *s == '-';
    if (*s == '-' || *s == '+')
        ++s;
    if (*s < '0' || *s > '9')
        return 0;
    i64 v = 0;
    while (*s >= '0' && *s <= '9')
        v = v * 10 + (*s++ - '0');
    if (*s)
        return 0;
    *out = negative ? -v : v;
    return 1;
}

__attribute__((constructor)) static void read_offset(int argc, char** argv, char** envp)
{
    (void)argc;
    (void)argv;
    for (char** e = envp; e && *e; ++e) {
        const char* key = "FAKETIME=";
        const char* p = *e;
        while (*key && *p == *key) {
            ++p;
            ++key;
        }
        if (!*key && parse_offset(p, &offset_seconds))
            return;
    }
}

static int is_calendar(int clock)
{
    return clock == clock_realtime || clock == clock_realtime_coarse || clock == clock_realtime_alarm ||
           clock == clock_tai;
}

int __clock_gettime64(int clock, struct ts64* t)
{
    int r = real_clock_gettime(clock, t);
    if (r < 0)
        return -1;
    if (is_calendar(clock))
        t->tv_sec += offset_seconds;
    return 0;
}

int __gettimeofday64(struct tv64* tv, void* tz)
{
    (void)tz;
    struct ts64 t;
    if (__clock_gettime64(clock_realtime, &t))
        return -1;
    if (tv) {
        tv->tv_sec = t.tv_sec;
        /* Nanoseconds fit 32 bits: a 64-bit division would need libgcc. */
        tv->tv_usec = (int)t.tv_nsec / 1000;
    }
    return 0;
}

i64 __time64(i64* out)
{
    struct ts64 t;
    if (__clock_gettime64(clock_realtime, &t))
        return -1;
    if (out)
        *out = t.tv_sec;
    return t.tv_sec;
}

#else
/* ISO C wants at least one declaration in a translation unit. */
typedef int faketime32_empty_on_this_architecture;
#endif
