
"use strict";
