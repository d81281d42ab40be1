-- An interpreter's loop: instructions by number, dispatched with a chain of conditions.
local rounds = tonumber(arg[1] or 50)

local PUSH_ONE, ADD, DOUBLE, WRAP, SWAP, COUNT_DOWN, JUMP_UNLESS_ZERO, HALT = 0, 1, 2, 3, 4, 5, 6, 7

local function execute(program, count)
  local pc, a, b, left = 1, 1, 2, count
  while true do
    local op = program[pc]
    if op == PUSH_ONE then
      b = 1
    elseif op == ADD then
      a = a + b
    elseif op == DOUBLE then
      a = a * 2
    elseif op == WRAP then
      a = a % 65521
    elseif op == SWAP then
      a, b = b, a
    elseif op == COUNT_DOWN then
      left = left - 1
    elseif op == JUMP_UNLESS_ZERO then
      if left ~= 0 then pc = 0 end
    elseif op == HALT then
      return a * 10 + b % 10
    end
    pc = pc + 1
  end
end

local program = { ADD, WRAP, SWAP, DOUBLE, WRAP, ADD, WRAP, COUNT_DOWN, JUMP_UNLESS_ZERO, HALT }
print(execute(program, 50000 * rounds))
