#version 330
#include <viewer_lights.glsl>

uniform vec3 eye;

in vec3 surface_position;
in vec3 surface_normal;

out vec4 colour;

void main()
{
	const vec3 CLAY = vec3(0.55, 0.53, 0.5);
	vec3 normal = normalize(surface_normal);
	if (dot(normal, eye - surface_position) < 0.0)
		normal = -normal;
	vec3 sum = ambient_light(normal) * CLAY;
	for (int i = 0; i < LIGHTS; ++i) {
		vec4 light = towards_light(i, surface_position);
		sum += CLAY * to_linear(light_colour[i].rgb) * max(dot(normal, light.xyz), 0.0) * light.w;
	}
	colour = vec4(to_screen(sum), 1.0);
}
