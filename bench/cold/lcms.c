/* lcms REQUEST link|profiles [memory]: makes the request's table through Little CMS, from its
 * profiles without optimisation, or from a device link beside the request. */
#include <lcms2.h>
#include <string.h>

#include "bench/cold/memory.h"
#include "bench/cold/request.h"

enum { POINTS = 17, PLANE = POINTS * POINTS * POINTS, CHANNELS = 4 };

static unsigned char rgb[3 * PLANE], pixels[CHANNELS * PLANE], table[CHANNELS * PLANE];

static cmsHTRANSFORM from_profiles(const struct part* lines) {
  char path[2][1024];
  int intent = 0;
  if (sscanf((const char*)lines->bytes, "%1023[^\n]\n%1023[^\n]\n%d", path[0], path[1], &intent) !=
      3) {
    _exit(2);
  }
  const cmsHPROFILE source = cmsOpenProfileFromFile(path[0], "r");
  const cmsHPROFILE output = cmsOpenProfileFromFile(path[1], "r");
  const cmsHTRANSFORM transform =
      cmsCreateTransform(source, TYPE_RGB_8, output, TYPE_CMYK_8, (cmsUInt32Number)intent,
                         cmsFLAGS_NOOPTIMIZE | cmsFLAGS_NOCACHE);
  cmsCloseProfile(source);
  cmsCloseProfile(output);
  return transform;
}

static cmsHTRANSFORM from_link(const char* request) {
  char path[1024];
  snprintf(path, sizeof path, "%s.link", request);
  cmsHPROFILE link = cmsOpenProfileFromFile(path, "r");
  const cmsHTRANSFORM transform = cmsCreateMultiprofileTransform(
      &link, 1, TYPE_RGB_8, TYPE_CMYK_8, INTENT_PERCEPTUAL, cmsFLAGS_NOOPTIMIZE | cmsFLAGS_NOCACHE);
  cmsCloseProfile(link);
  return transform;
}

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  struct part part[PARTS];
  read_request(argv[1], part);
  if (argc > 3) keep_heap();
  const int is_link = strcmp(argv[2], "link") == 0;
  const cmsHTRANSFORM transform = is_link ? from_link(argv[1]) : from_profiles(&part[PROFILES]);
  if (transform == NULL) return 2;
  for (int i = 0; i < PLANE; ++i) {
    const int point[3] = {i / (POINTS * POINTS), i / POINTS % POINTS, i % POINTS};
    for (int k = 0; k < 3; ++k) rgb[3 * i + k] = (unsigned char)((point[k] * 255 + 8) / 16);
  }
  cmsDoTransform(transform, rgb, pixels, PLANE);
  for (int i = 0; i < CHANNELS * PLANE; ++i) table[i] = pixels[i % PLANE * CHANNELS + i / PLANE];
  cmsDeleteTransform(transform);
  if (argc > 3) report_memory();
  return !is_link && memcmp(table, part[WANTED].bytes, sizeof table) != 0;
}
