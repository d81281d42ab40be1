/* The fastest compiler there can be: it writes a log that tells of success, and does nothing else. Benchmarks
 * take it for the compiler, so that what they measure is the build.
 *
 *   vb6-goodlog PROJECT.vbp /make|/makedll /out LOG
 *
 * The log is a POSIX path, or a DOS path on a drive of HEARTHMAKE_DRIVES ("C:=/home/me/c;Z:=/"); its names
 * are taken as they are spelled. */

#define _GNU_SOURCE

#include <ctype.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

enum { kPathSize = 4096 };

static int HexDigit(char c) {
  return isdigit((unsigned char)c) ? c - '0' : toupper((unsigned char)c) - 'A' + 10;
}

/* Finds the folder of a drive; "%3B" in it stands for a character of that number. 0 when there is none. */
static int FindDrive(char letter, char* folder, size_t size) {
  const char* drives = getenv("HEARTHMAKE_DRIVES");
  size_t length = 0;
  while (drives != NULL && *drives != '\0') {
    const char* end = strchrnul(drives, ';');
    if (end - drives > 3 && toupper((unsigned char)drives[0]) == letter && drives[1] == ':' &&
        drives[2] == '=') {
      for (const char* c = drives + 3; c < end && length + 1 < size; ++c) {
        const int coded =
            *c == '%' && end - c > 2 && isxdigit((unsigned char)c[1]) && isxdigit((unsigned char)c[2]);
        folder[length++] = coded ? (char)(HexDigit(c[1]) * 16 + HexDigit(c[2])) : *c;
        if (coded) c += 2;
      }
      folder[length] = '\0';
      return 1;
    }
    drives = *end == ';' ? end + 1 : end;
  }
  return 0;
}

/* The POSIX path of the log; 0 when it has none. */
static int LogPath(const char* log, char* path, size_t size) {
  const char* rest = log;
  path[0] = '\0';
  if (isalpha((unsigned char)log[0]) && log[1] == ':') {
    if (!FindDrive((char)toupper((unsigned char)log[0]), path, size)) return 0;
    rest = log + 2;
    if (strcmp(path, "/") == 0) path[0] = '\0';
  }
  size_t length = strlen(path);
  for (; *rest != '\0' && length + 1 < size; ++rest) path[length++] = *rest == '\\' ? '/' : *rest;
  path[length] = '\0';
  return *rest == '\0';
}

int main(int argc, char** argv) {
  const char* log = NULL;
  for (int i = 1; i + 1 < argc; ++i) {
    if (strcasecmp(argv[i], "/out") == 0) log = argv[i + 1];
  }
  char path[kPathSize];
  if (log == NULL || !LogPath(log, path, sizeof path)) {
    fputs("vb6-goodlog: /out names no log on a known drive\n", stderr);
    return 1;
  }
  const char* name = argv[1];
  for (const char* c = argv[1]; *c != '\0'; ++c) {
    if (*c == '\\' || *c == '/') name = c + 1;
  }
  char text[kPathSize + 64];
  const int length = snprintf(text, sizeof text, "Build of '%.*s' succeeded.\r\n", kPathSize, name);
  const int file = open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  if (file < 0 || write(file, text, (size_t)length) != length || close(file) != 0) {
    perror(path);
    return 1;
  }
  return 0;
}
