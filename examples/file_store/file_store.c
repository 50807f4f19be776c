/*
 * A configuration store over plain files: the four functions of tarn_nvram_config.h, for a router
 * that has none. The library and cmifctl are built over it with CMIF_STORE_LIBRARY.
 *
 *     cc -shared -fPIC -Iplatform -Wl,-soname,libfile_store.so -o build/libfile_store.so \
 *         examples/file_store/file_store.c
 *
 * A file holds "key=value" texts, each with its NUL, so that a value may be any text; `tr '\0'
 * '\n'` shows it. It is only ever replaced as a whole, by a rename: a reader sees the old file or
 * the new one, and what a killed writer leaves does not count.
 *
 * Only the user who writes the files may read them, since passwords are in them: the programs of a
 * router that use the store run as one user.
 */
#include "tarn_nvram_config.h"

#include <fcntl.h>
#include <stdio.h>
#include <string.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

/* Of the first, a restart leaves nothing: what was saved is then what runs. */
#ifndef FILE_STORE_RUNNING
#define FILE_STORE_RUNNING "/run/file_store.running"
#define FILE_STORE_SAVED   "/data/file_store.saved"
#endif

enum { key_limit = 63, value_limit = 4095 };

struct texts {
    const char *begin, *end;
};

/* Nothing ever changes the mapped file itself. */
static struct texts map_file(const char *path)
{
    struct texts texts = {NULL, NULL};
    struct stat state;
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return texts;
    if (fstat(file, &state) == 0 && state.st_size > 0) {
        const char *map = mmap(NULL, (size_t)state.st_size, PROT_READ, MAP_SHARED, file, 0);
        if (map != MAP_FAILED)
            texts = (struct texts){map, map + state.st_size};
    }
    close(file);
    return texts;
}

static struct texts map_running(void)
{
    return map_file(access(FILE_STORE_RUNNING, F_OK) == 0 ? FILE_STORE_RUNNING : FILE_STORE_SAVED);
}

static void unmap(struct texts texts)
{
    if (texts.begin != NULL)
        munmap((void *)texts.begin, (size_t)(texts.end - texts.begin));
}

/* The text at `begin` without its NUL; false when there is no other. */
static int is_text(struct texts texts, size_t *length)
{
    const size_t room = (size_t)(texts.end - texts.begin);
    *length = texts.begin == NULL ? 0 : strnlen(texts.begin, room);
    return *length < room;
}

/* Where the value begins when `text` is the key's; NULL otherwise. */
static const char *value_of(const char *text, const char *key)
{
    const size_t length = strlen(key);
    return strncmp(text, key, length) == 0 && text[length] == '=' ? text + length + 1 : NULL;
}

static const char *find(struct texts texts, const char *key)
{
    for (size_t length; is_text(texts, &length); texts.begin += length + 1)
        if (value_of(texts.begin, key) != NULL)
            return value_of(texts.begin, key);
    return "";
}

/* All texts, but with this value of `key`, which may be NULL: then nothing changes. */
static int write_texts(FILE *file, struct texts texts, const char *key, const char *value)
{
    for (size_t length; is_text(texts, &length); texts.begin += length + 1)
        if (key == NULL || value_of(texts.begin, key) == NULL)
            fwrite(texts.begin, 1, length + 1, file);
    if (key != NULL && *value != '\0')
        fprintf(file, "%s=%s%c", key, value, '\0');
    return ferror(file) || fflush(file) != 0 || fsync(fileno(file)) != 0 ? -1 : 0;
}

/* The caller holds the lock: there is one temporary file for each path. */
static int replace_file(const char *path, const char *key, const char *value)
{
    char temporary[sizeof FILE_STORE_RUNNING + sizeof FILE_STORE_SAVED];
    snprintf(temporary, sizeof temporary, "%s.new", path);
    unlink(temporary); /* what a killed writer has left, whatever its mode is */
    const int number = open(temporary, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    FILE *file = number < 0 ? NULL : fdopen(number, "w");
    if (file == NULL) {
        close(number);
        return -1;
    }
    const struct texts running = map_running();
    const int written = write_texts(file, running, key, value);
    unmap(running);
    return fclose(file) == 0 && written == 0 ? rename(temporary, path) : -1;
}

/* One writer at a time, of all threads of all processes; the kernel unlocks for a killed one. */
static int replace_locked(const char *path, const char *key, const char *value)
{
    const int lock = open(FILE_STORE_RUNNING ".lock", O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (lock < 0)
        return -1;
    const int result = flock(lock, LOCK_EX) == 0 ? replace_file(path, key, value) : -1;
    close(lock);
    return result;
}

static int is_key(const char *key)
{
    const size_t length = strnlen(key, key_limit + 1);
    return length > 0 && length <= key_limit && strchr(key, '=') == NULL;
}

const char *tarnNvramConfig_get(const char *key)
{
    static __thread char answer[value_limit + 1]; /* each thread has its own */
    const struct texts running = map_running();
    snprintf(answer, sizeof answer, "%s", find(running, key));
    unmap(running);
    return answer;
}

int tarnNvramConfig_set(const char *key, const char *value)
{
    if (!is_key(key) || strnlen(value, value_limit + 1) > value_limit)
        return -1;
    return replace_locked(FILE_STORE_RUNNING, key, value);
}

int tarnNvramConfig_match(const char *key, const char *text)
{
    const struct texts running = map_running();
    const int equal = strcmp(find(running, key), text) == 0;
    unmap(running);
    return equal;
}

int tarnNvramConfig_save(void)
{
    const int result = replace_locked(FILE_STORE_SAVED, NULL, NULL);
    sync(); /* the file's new name, too */
    return result;
}
