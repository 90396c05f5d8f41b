#pragma once
#include "messages_of_yesterday.h"
