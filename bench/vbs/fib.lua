-- Calls: the Fibonacci numbers by plain recursion.
local rounds = tonumber(arg[1] or 6)

local function fib(n)
  if n < 2 then return n end
  return fib(n - 1) + fib(n - 2)
end

local sum = 0
for i = 1, rounds do
  sum = sum + fib(26 + i)
end
print(sum)
