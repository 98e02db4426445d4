/* Lets a plain file be a framebuffer, so that the drawing into one can be looked at where there is none:
 *
 *   FRAMEBUFFER=800x480 LD_PRELOAD=framebuffer.so QT_QPA_PLATFORM=linuxfb:fb=FILE dravik
 *
 * FILE holds the picture: 4 bytes for each pixel (blue, green, red, nothing), row after row. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <linux/fb.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static struct fb_bitfield Colour(unsigned offset) {
    struct fb_bitfield field = {offset, 8, 0};
    return field;
}

int ioctl(int file, unsigned long request, ...) {
    va_list arguments;
    va_start(arguments, request);
    void* argument = va_arg(arguments, void*);
    va_end(arguments);

    unsigned width = 800, height = 480;
    sscanf(getenv("FRAMEBUFFER"), "%ux%u", &width, &height);
    if (request == FBIOGET_VSCREENINFO) {
        struct fb_var_screeninfo* screen = argument;
        memset(screen, 0, sizeof *screen);
        screen->xres = screen->xres_virtual = width;
        screen->yres = screen->yres_virtual = height;
        screen->bits_per_pixel = 32;
        screen->red = Colour(16);
        screen->green = Colour(8);
        screen->blue = Colour(0);
        return 0;
    }
    if (request == FBIOGET_FSCREENINFO) {
        struct fb_fix_screeninfo* memory = argument;
        memset(memory, 0, sizeof *memory);
        memory->line_length = width * 4;
        memory->smem_len = width * height * 4;
        memory->visual = FB_VISUAL_TRUECOLOR;
        return 0;
    }
    if (request == FBIOBLANK) return 0;
    int (*next)(int, unsigned long, ...) = (int (*)(int, unsigned long, ...))dlsym(RTLD_NEXT, "ioctl");
    return next(file, request, argument);
}
