/* Writes the image that was linked in to standard output. */
#include <stddef.h>
#include <stdio.h>

extern const unsigned char board_image[];
extern const size_t board_image_size;

int main(void) { return fwrite(board_image, 1, board_image_size, stdout) == board_image_size ? 0 : 1; }
